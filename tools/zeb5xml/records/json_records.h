#ifndef ZEB5XML_JSON_RECORDS_H
#define ZEB5XML_JSON_RECORDS_H

#include <memory>
#include <vector>

#include "records/record_list.h"

/// Records that were read from JSON, and their kind.
struct json_records {
    const record_kind *kind = nullptr; // null: there is no record
    std::unique_ptr<record_list> list;
};

/// Reads the records that `export` wrote as jsonl or json: objects one behind the other, or one array of
/// them. All must be of one of these kinds. A field that an object lacks, or that is null, is as in a record
/// that a reader makes new; "source" and the names of masks and types are passed over. Throws failure, with
/// the line, for anything that a record cannot hold: nothing is cut, no name is unknown, and none stands
/// twice.
json_records read_json_records(const document &source, const std::vector<const record_kind *> &kinds,
                               const conversion &how);

#endif
