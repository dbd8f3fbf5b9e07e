#ifndef ZEB5XML_SPLIT_VALUES_H
#define ZEB5XML_SPLIT_VALUES_H

#include <string>
#include <string_view>
#include <vector>

/// The text of one element that a reader gets in pieces, of which it keeps only one.
struct split_value {
    int line; // where the element starts, counted from 1
    std::string element;
    int pieces;
    std::string causes; // what stands between the pieces
};

/// Finds them in a well-formed document of an encoding that contains ASCII.
std::vector<split_value> find_split_values(std::string_view xml);

#endif
