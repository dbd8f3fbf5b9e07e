#ifndef ZEB5XML_DIFFERENCES_H
#define ZEB5XML_DIFFERENCES_H

/// What differs between records. Records are matched by their identity and not by their place, and so are
/// the parts of records; of several with one identity, those are matched that are most alike.

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "records/record_list.h"
#include "values/record.h"

/// One field that differs, or one part that only one of the records has.
struct difference {
    std::string path;         // "bits[3].bit_name"
    std::string field;        // "bits.bit_name"
    const field_row *row;     // of the field, or of the list of the part
    std::optional<value> was; // a part stands alone in a list; nothing: it was not there
    std::optional<value> is;
};

/// What differs between two records of this type, in the order of its rows.
std::vector<difference> differences(const record &before, const record &after, const record_type &type);

/// What stands at one side of the difference: "on", 0xc (BOR:EOR), or nothing.
std::string side_text(const std::optional<value> &one, const field_row &row);

/// "bits[3].bit_name: "on" `becomes` "off"", or the part with nothing at the side that lacks it.
std::string difference_text(const difference &one, const std::string &becomes);

/// A record of one list with its match in the other; at least one of them is there.
struct record_pair {
    std::string name;            // what messages call the record
    std::optional<size_t> place; // of the record before
    std::optional<record> before;
    std::optional<record> after;
};

/// Calls `action` for each record of two lists of one type, sorted by identity. Only one pair is held at a
/// time.
void for_each_pair(const record_list &before, const record_list &after,
                   const std::function<void(const record_pair &)> &action);

#endif
