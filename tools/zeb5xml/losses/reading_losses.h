#ifndef ZEB5XML_READING_LOSSES_H
#define ZEB5XML_READING_LOSSES_H

/// What stands in a document and not in the records that were read from it. Losses are lines for standard
/// error.

#include <string>

#include "files/document.h"
#include "records/record_list.h"

/// What `check` finds in the document of which a reader makes records of this type, as far as it is lost when
/// they are written in this form.
std::string lost_in_reading(const document &source, const record_type &type, const form &to);

/// What is missing in `merged`, of which a reader has made one record for each identity; `all` are the
/// records as they stand in the document. Fields that the form does not hold are passed over.
std::string lost_in_merging(const document &source, const record_list &all, const record_list &merged,
                            const form &to);

/// What `--shift` makes no right mask of: numbers that are of no type, such as masks. `numbers` are the
/// records as they stand in the document.
std::string lost_in_shifting(const document &source, const record_list &numbers);

#endif
