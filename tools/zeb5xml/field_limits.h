#ifndef ZEB5XML_FIELD_LIMITS_H
#define ZEB5XML_FIELD_LIMITS_H

#include <cstddef>
#include <string>
#include <vector>

#include "document.h"

/// A value that is longer than the field of the record that it goes to.
struct cut_value {
    std::string element;
    size_t length; // bytes
    size_t limit;
    const char *where; // added to the message; may be empty
    std::string beginning;
};

/// Finds cut values in a document with this root element. The document must be readable without errors.
std::vector<cut_value> find_cut_values(const document &source, const std::string &root);

#endif
