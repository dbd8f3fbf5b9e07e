#ifndef ZEB5XML_NEAREST_H
#define ZEB5XML_NEAREST_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Returns the name that was probably meant by `text`: the one that takes the fewest changes of a letter,
/// whatever its case; empty when none is near.
std::string nearest(std::string_view text, const std::vector<std::string> &names);

/// Counts the letters to insert, remove, replace or swap with their neighbour to make `b` of `a`, whatever
/// their case.
size_t changes_between(std::string_view a, std::string_view b);

/// Returns "; did you mean 'NAME'?" for the nearest name, or an empty text.
std::string did_you_mean(std::string_view text, const std::vector<std::string> &names);

#endif
