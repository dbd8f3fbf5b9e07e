#ifndef ZEB5XML_WORDS_H
#define ZEB5XML_WORDS_H

#include <cstddef>
#include <string>

/// "1 channel", "2 channels": `nouns` is the plural.
std::string counted(size_t count, const std::string &nouns);

#endif
