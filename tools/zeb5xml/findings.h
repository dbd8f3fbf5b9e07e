#ifndef ZEB5XML_FINDINGS_H
#define ZEB5XML_FINDINGS_H

#include "document_kinds.h"

/// A value of which a reader misses something, although the parser reports nothing.
struct missed_value {
    std::string line; // what to tell, with a line end
    size_t limit;     // bytes of the field that cuts the value; 0: none does
};
struct findings {
    std::vector<missed_value> split; // values that come in pieces
    std::vector<missed_value> cut;   // values longer than their field
};
findings find_missed_values(const document &source, const document_kind &kind);

/// The lines of all values.
std::string lines_of(const std::vector<missed_value> &values);

#endif
