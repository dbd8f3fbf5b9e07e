#ifndef ZEB5XML_WRITE_RECORDS_H
#define ZEB5XML_WRITE_RECORDS_H

#include <string>

#include "records/document_kinds.h"

/// Records to write in a form, and what is known about them.
struct records_to_write {
    std::string name; // what messages call them
    const record_kind &kind;
    const record_list &list;
    const conversion &how;
    const form &to;
    std::string lost_before; // what was lost when they were read: lines for standard error
};

/// Writes the records to the file `output`, "-" being standard output. A document is read back before, and
/// everything that would be lost is told on standard error. Unless it is accepted or forced, nothing is
/// written then: throws failure, whose text ends in `way_out`.
void write_records(const records_to_write &what, const std::string &output, bool force,
                   const std::string &way_out = "");

#endif
