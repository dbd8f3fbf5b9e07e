#ifndef ZEB5XML_FIELD_ROWS_H
#define ZEB5XML_FIELD_ROWS_H

/// Rows of record types, made from pointers to members. A member of a member is given by both pointers.

#include <algorithm>
#include <cstring>
#include <limits>
#include <type_traits>

#include "event.h"
#include "values/record.h"

namespace field_rows {

template <class> struct member;
template <class Struct, class Type> struct member<Type Struct::*> { using owner = Struct; };

/// The member at the end of the path.
template <auto First, auto... Rest> auto &reach(auto &owner) {
    if constexpr (sizeof...(Rest) == 0)
        return owner.*First;
    else
        return reach<Rest...>(owner.*First);
}
template <auto First, auto... Rest> const auto &in(const void *from) {
    return reach<First, Rest...>(*static_cast<const typename member<decltype(First)>::owner *>(from));
}
template <auto First, auto... Rest> auto &in(void *to) {
    return reach<First, Rest...>(*static_cast<typename member<decltype(First)>::owner *>(to));
}
template <auto... Path>
using type_at = std::remove_reference_t<decltype(in<Path...>(static_cast<void *>(nullptr)))>;

/// An integer, or an event type.
template <auto... Path> constexpr field_row number(const char *name, field_kind kind = NUMBER) {
    using type = type_at<Path...>;
    field_row row = {
        name, kind, [](const void *from) { return value{static_cast<std::int64_t>(in<Path...>(from))}; },
        [](void *to, const value &content) { in<Path...>(to) = static_cast<type>(content.number()); }, 1};
    if constexpr (std::is_same_v<type, ZEB5_EVTYPE>) {
        row.highest = ZEB5_EV_EVMAX;
    } else {
        row.lowest = std::numeric_limits<type>::min();
        row.highest = std::numeric_limits<type>::max();
    }
    return row;
}

template <auto... Path> constexpr field_row decimal(const char *name) {
    return {name, REAL, [](const void *from) { return value{real{in<Path...>(from)}}; },
            [](void *to, const value &content) { in<Path...>(to) = std::get<real>(content.content).number; },
            1};
}

/// A text in an array; `unused` bytes at its end, the NUL among them, never hold text.
template <size_t Unused, auto... Path> constexpr field_row bounded_text(const char *name) {
    using array = type_at<Path...>;
    field_row row = {name, TEXT,
                     [](const void *from) {
                         const auto &field = in<Path...>(from);
                         return value{std::string(field, strnlen(field, sizeof field))};
                     },
                     [](void *to, const value &content) {
                         auto &field = in<Path...>(to);
                         const size_t length = std::min(content.text().size(), sizeof field - Unused);
                         std::memcpy(field, content.text().data(), length);
                         std::memset(field + length, 0, sizeof field - length);
                     },
                     1};
    row.capacity = sizeof(array) - Unused;
    return row;
}
template <auto... Path> constexpr field_row text(const char *name) { return bounded_text<1, Path...>(name); }

template <auto Member> constexpr field_row free_text(const char *name) {
    return {name, TEXT, [](const void *from) { return value{in<Member>(from)}; },
            [](void *to, const value &content) { in<Member>(to) = content.text(); }, 1};
}

/// The list to read from: in the record, or behind a pointer that may be null.
template <class Part> const std::vector<Part *> &list_of(const std::vector<Part *> &list) { return list; }
template <class Part> const std::vector<Part *> &list_of(const std::vector<Part *> *list) {
    static const std::vector<Part *> none;
    return list ? *list : none;
}

/// The list of a new record.
template <class Part> std::vector<Part *> &new_list(std::vector<Part *> &list) { return list; }
template <class Part> std::vector<Part *> &new_list(std::vector<Part *> *list) { return *list; }

/// A list of owned parts, in the record or behind a pointer.
template <auto List, const record_type &Type> constexpr field_row parts(const char *name) {
    field_row row = {name, PARTS,
                     [](const void *from) {
                         std::vector<record> found;
                         for (const auto *part : list_of(in<List>(from)))
                             if (part)
                                 found.push_back(record_from(part, Type));
                         return value{std::move(found)};
                     },
                     [](void *to, const value &content) {
                         auto &list = new_list(in<List>(to));
                         using part = std::remove_reference_t<decltype(*list.front())>;
                         for (const record &one : content.parts())
                             list.push_back(static_cast<part *>(struct_from(one, Type)));
                     },
                     1};
    row.part = &Type;
    return row;
}

/// The same beside a count of the parts.
template <auto List, auto Count, const record_type &Type>
constexpr field_row counted_parts(const char *name) {
    field_row row = parts<List, Type>(name);
    row.members = 2;
    row.set = [](void *to, const value &content) {
        parts<List, Type>("").set(to, content);
        in<Count>(to) = static_cast<type_at<Count>>(content.parts().size());
    };
    return row;
}

/// A list of names that are made with `new char[]`.
template <auto List> constexpr field_row names(const char *name) {
    return {name, TEXTS,
            [](const void *from) {
                texts found;
                for (const char *one : list_of(in<List>(from)))
                    if (one)
                        found.emplace_back(one);
                return value{std::move(found)};
            },
            [](void *to, const value &content) {
                for (const std::string &one : std::get<texts>(content.content)) {
                    char *copy = new char[one.size() + 1];
                    std::memcpy(copy, one.c_str(), one.size() + 1);
                    new_list(in<List>(to)).push_back(copy);
                }
            },
            1};
}

/// The same row, whose field the option `filter` selects by.
constexpr field_row selected_by(const char *filter, field_row row) {
    row.filter = filter;
    return row;
}

/// Number of the struct's members that the rows cover.
template <size_t N> constexpr int members_in(const field_row (&rows)[N]) {
    int members = 0;
    for (const field_row &row : rows)
        members += row.members;
    return members;
}

} // namespace field_rows

#endif
