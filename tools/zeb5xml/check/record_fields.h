#ifndef ZEB5XML_RECORD_FIELDS_H
#define ZEB5XML_RECORD_FIELDS_H

#include <cstddef>
#include <vector>

#include "check/check_rules.h"
#include "check/record_tree.h"

/// What is said about the fields of one kind of document.
struct field_rules {
    bool is_written;         // a writer exists for the kind
    std::size_t small_field; // size of the identity's field in a smaller record layout; 0: there is none
};

/// Compares each value of the document with what the reader kept of it.
std::vector<finding> faults_of_fields(const checked_document &document, record_tree &tree,
                                      const field_rules &rules);

#endif
