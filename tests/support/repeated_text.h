#ifndef REPEATED_TEXT_H
#define REPEATED_TEXT_H

/// Long texts of many pieces.

#include <cstddef>
#include <string>

#include "support/reader_forms.h"

/// The same text again and again.
inline std::string times(std::size_t count, const std::string &text) {
    std::string all;
    all.reserve(count * text.size());
    for (std::size_t i = 0; i < count; ++i)
        all += text;
    return all;
}

/// The numbers from 0 on, each between two texts.
inline std::string numbered(std::size_t count, const std::string &before, const std::string &behind) {
    std::string all;
    for (std::size_t i = 0; i < count; ++i)
        all += before + std::to_string(i) + behind;
    return all;
}

/// The same text again and again, with the numbers from 0 on in place of each '@'.
inline std::string numbered(std::size_t count, const std::string &text) {
    std::string all;
    for (std::size_t i = 0; i < count; ++i)
        all += replace_all(text, "@", std::to_string(i));
    return all;
}

#endif
