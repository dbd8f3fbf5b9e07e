#ifndef ZEB5XML_UTF_8_H
#define ZEB5XML_UTF_8_H

#include <cstddef>
#include <string>
#include <string_view>

/// Whether a byte continues a character that began before it.
constexpr bool continues_character(char byte) { return (byte & 0xC0) == 0x80; }

/// Returns the length of the character of UTF-8 that starts at `at`; 0 when there is none: one that is cut
/// off, is longer than needed or stands for no character, as surrogates do.
std::size_t character_length(std::string_view bytes, std::size_t at);

void append_character(std::string &text, char32_t character);

/// The two digits of a byte in base 16: "E4".
std::string hexadecimal_digits(char byte);

#endif
