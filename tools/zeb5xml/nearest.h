#ifndef ZEB5XML_NEAREST_H
#define ZEB5XML_NEAREST_H

#include <string>
#include <string_view>
#include <vector>

/// Returns the name that was probably meant by `text`: the one that takes the fewest changes of a letter,
/// whatever its case; empty when none is near.
std::string nearest(std::string_view text, const std::vector<std::string> &names);

/// Returns "; did you mean 'NAME'?" for the nearest name, or an empty text.
std::string did_you_mean(std::string_view text, const std::vector<std::string> &names);

#endif
