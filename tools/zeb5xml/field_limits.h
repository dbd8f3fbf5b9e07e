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
    const char *where; // what else there is to say; may be empty
    std::string beginning;
};

/// Finds them in a document with this root element that is read without errors.
std::vector<cut_value> find_cut_values(document &source, const std::string &root);

#endif
