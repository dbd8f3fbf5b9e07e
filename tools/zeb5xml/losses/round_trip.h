#ifndef ZEB5XML_ROUND_TRIP_H
#define ZEB5XML_ROUND_TRIP_H

#include "records/record_list.h"

/// What does not come back when records that were written in a form are read again. Each line names the
/// record, the field, what it was and what it becomes. What the form does not hold is one line for each
/// field, with the number of records and an example.
struct round_trip_losses {
    texts accepted; // nobody expects the form to hold these
    texts refused;
};

/// Reads `text` back, which holds the records of `list` in this form, and compares. A form that cannot be
/// read back is looked at for records that are left out, texts that break its rows, and numbers that lose
/// digits.
round_trip_losses find_losses(const record_list &list, const record_kind &kind, const conversion &how,
                              const form &to, const std::string &text);

#endif
