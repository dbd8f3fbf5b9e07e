#ifndef ZEB5_PLAIN_CHARACTERS_H
#define ZEB5_PLAIN_CHARACTERS_H

/// What single characters and references mean in a plain document.

#include "text/byte_block.h"

namespace zeb5 {

/// Blank, tab, line feed, carriage return.
constexpr bool is_space(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

constexpr bool is_name_start(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == ':';
}

constexpr bool is_name_character(char c) {
    return is_name_start(c) || (c >= '0' && c <= '9') || c == '-' || c == '.';
}

/// Whether a character may not stand in a plain document: a control character that XML does not allow.
constexpr bool is_forbidden(char c) { return static_cast<unsigned char>(c) < ' ' && !is_space(c); }

/// Whether a byte is not ASCII; `char` has a sign on x86-64 and none on arm64.
constexpr bool is_wide(char c) { return static_cast<signed char>(c) < 0; }

/// Marks the bytes of a block that are control characters, line ends included, or not ASCII.
inline signed_byte_block is_control_or_wide(byte_block block) {
    return reinterpret_cast<signed_byte_block>(block) < ' ';
}

/// Reads the reference at `at`, which is an '&': one of the five named ones or the number of a character that
/// XML allows. Sets `character` and returns the end of the reference; returns null for anything else.
const char *read_reference(const char *at, char32_t &character);

} // namespace zeb5

#endif
