#include "steps/plain_characters.h"

#include <string_view>

namespace zeb5 {

namespace {

bool is_xml_character(char32_t c) {
    return c == '\t' || c == '\n' || c == '\r' || (c >= 0x20 && c < 0xD800) || (c >= 0xE000 && c < 0xFFFE) ||
           (c >= 0x10000 && c < 0x110000);
}

/// Returns the value of a hexadecimal digit; 16 for any other character.
unsigned digit(char c) {
    if (c >= '0' && c <= '9')
        return static_cast<unsigned>(c - '0');
    if (c >= 'a' && c <= 'f')
        return static_cast<unsigned>(c - 'a') + 10;
    if (c >= 'A' && c <= 'F')
        return static_cast<unsigned>(c - 'A') + 10;
    return 16;
}

const char *read_number(const char *at, char32_t &character) {
    constexpr int most_digits = 8; // more do not fit into 32 bits
    const unsigned base = *at == 'x' ? 16 : 10;
    at += base == 16;
    char32_t number = 0; // without digits it stays 0, which is no character
    for (int digits = 0; digit(*at) < base; ++at) {
        if (++digits > most_digits)
            return nullptr;
        number = number * base + digit(*at);
    }
    if (*at != ';' || !is_xml_character(number))
        return nullptr;
    character = number;
    return at + 1;
}

} // namespace

const char *read_reference(const char *at, char32_t &character) {
    struct named {
        std::string_view text;
        char32_t character;
    };
    static constexpr named names[] = {
        {"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}};
    if (at[1] == '#')
        return read_number(at + 2, character);
    for (const named &known : names)
        if (std::string_view(at, known.text.size()) == known.text) {
            character = known.character;
            return at + known.text.size();
        }
    return nullptr;
}

} // namespace zeb5
