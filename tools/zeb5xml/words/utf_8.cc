#include "words/utf_8.h"

namespace {

/// The characters of which the first byte lies in a range.
struct character_form {
    unsigned char first, last;     // of the first byte
    unsigned char lowest, highest; // of the second byte
    std::size_t length;
};
constexpr character_form forms[] = {
    {0x00, 0x7F, 0x00, 0x00, 1}, {0xC2, 0xDF, 0x80, 0xBF, 2}, {0xE0, 0xE0, 0xA0, 0xBF, 3},
    {0xE1, 0xEC, 0x80, 0xBF, 3}, {0xED, 0xED, 0x80, 0x9F, 3}, {0xEE, 0xEF, 0x80, 0xBF, 3},
    {0xF0, 0xF0, 0x90, 0xBF, 4}, {0xF1, 0xF3, 0x80, 0xBF, 4}, {0xF4, 0xF4, 0x80, 0x8F, 4},
};

bool is_of(const character_form &form, std::string_view bytes) {
    for (std::size_t i = 1; i < form.length; ++i) {
        const auto next = static_cast<unsigned char>(bytes[i]);
        if (next < (i == 1 ? form.lowest : 0x80) || next > (i == 1 ? form.highest : 0xBF))
            return false;
    }
    return true;
}

} // namespace

std::size_t character_length(std::string_view bytes, std::size_t at) {
    const auto lead = static_cast<unsigned char>(bytes[at]);
    for (const character_form &form : forms)
        if (form.first <= lead && lead <= form.last)
            return at + form.length <= bytes.size() && is_of(form, bytes.substr(at)) ? form.length : 0;
    return 0;
}

void append_character(std::string &text, char32_t character) {
    const auto put = [&text](char32_t byte) { text += static_cast<char>(byte); };
    const auto put_rest = [&](int bits) { put(0x80 | (character >> bits & 0x3F)); };
    if (character < 0x80)
        return put(character);
    if (character < 0x800) {
        put(0xC0 | character >> 6);
    } else if (character < 0x10000) {
        put(0xE0 | character >> 12);
        put_rest(6);
    } else {
        put(0xF0 | character >> 18);
        put_rest(12);
        put_rest(6);
    }
    put_rest(0);
}

std::string hexadecimal_digits(char byte) {
    constexpr char digits[] = "0123456789ABCDEF";
    const auto number = static_cast<unsigned char>(byte);
    return {digits[number >> 4], digits[number & 15]};
}
