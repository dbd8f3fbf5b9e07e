#ifndef ZEB5XML_SPLIT_VALUES_H
#define ZEB5XML_SPLIT_VALUES_H

#include <string>
#include <string_view>
#include <vector>

/// An element's text that a reader gets in pieces, of which it keeps only one.
struct split_value {
    int line; // where the element starts, counted from 1
    std::string element;
    int pieces;
    std::string causes; // what stands between the pieces
};

/// Finds split values in a well-formed document whose encoding contains ASCII.
std::vector<split_value> find_split_values(std::string_view xml);

#endif
