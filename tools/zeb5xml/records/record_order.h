#ifndef ZEB5XML_RECORD_ORDER_H
#define ZEB5XML_RECORD_ORDER_H

/// An order of records in which it does not matter how they stood in their document: by identity, and those
/// of one identity by content.

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "records/record_list.h"
#include "values/record.h"

/// An identity that can be sorted: a number, or 0 and a text.
using record_key = std::pair<std::int64_t, std::string>;
record_key key_of(const value &identity);

/// The place of a record in its list.
struct keyed_place {
    record_key identity;
    size_t place;
    std::string content = {}; // digest of the record; empty when no other one of the list has this identity
};

using keyed_places = std::vector<keyed_place>;

/// The parts of a record, as a list of records.
struct part_list {
    const std::vector<record> &parts;
    const record_type &of;

    size_t size() const { return parts.size(); }
    const record_type &type() const { return of; }
    const record &at(size_t place) const { return parts[place]; }
    const value &identity_at(size_t place) const { return parts[place].fields.front(); }
};

/// All that the record holds, as JSON. Equal for records whose parts stand in another order.
std::string content_of(record fields, const record_type &type);

/// The same, shortened: its beginning, and a hash of all. Equal for equal contents, and a list may hold a
/// record of a thousand parts a thousand times.
std::string content_digest(record fields, const record_type &type);

/// Returns the end of the places that begin with this one and have its identity.
keyed_places::iterator end_of_group(keyed_places::iterator begin, keyed_places::iterator end);

/// The places of a record_list or a part_list, sorted.
template <class List> keyed_places sorted_places(const List &list) {
    keyed_places places;
    places.reserve(list.size());
    for (size_t i = 0; i < list.size(); ++i)
        places.push_back({key_of(list.identity_at(i)), i});
    std::stable_sort(places.begin(), places.end(),
                     [](const keyed_place &a, const keyed_place &b) { return a.identity < b.identity; });
    for (auto begin = places.begin(); begin != places.end();) {
        const auto end = end_of_group(begin, places.end());
        if (end - begin > 1) {
            for (auto one = begin; one != end; ++one)
                one->content = content_digest(list.at(one->place), list.type());
            std::stable_sort(
                begin, end, [](const keyed_place &a, const keyed_place &b) { return a.content < b.content; });
        }
        begin = end;
    }
    return places;
}

/// Tells of each record which of its identity it is in the order of the list, counted from 1.
std::vector<size_t> numbers_by_identity(const record_list &list);

/// Sorts the parts of the record, and the parts of these.
void sort_parts(record &fields, const record_type &type);

#endif
