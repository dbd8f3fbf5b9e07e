#ifndef ZEB5XML_WORDS_H
#define ZEB5XML_WORDS_H

#include <cstddef>
#include <string>
#include <vector>

/// "1 channel", "2 channels": `nouns` is the plural.
std::string counted(size_t count, const std::string &nouns);

/// The words with `between` between each two.
std::string joined(const std::vector<std::string> &words, const std::string &between);

#endif
