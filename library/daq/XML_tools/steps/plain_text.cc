#include "steps/plain_text.h"

#include <algorithm>

#include <xercesc/util/XMLException.hpp>

#include "steps/narrow_text.h"
#include "steps/plain_characters.h"
#include "steps/platform_hold.h"

namespace zeb5 {

namespace {

/// Returns the character at `at` and moves `at` to the next one. The bytes must have been checked.
char32_t next_character(const char *&at, plain_encoding encoding) {
    const auto byte = static_cast<unsigned char>(*at++);
    if (byte < 0x80 || encoding != plain_encoding::UTF_8)
        return byte;
    const int more = byte < 0xE0 ? 1 : byte < 0xF0 ? 2 : 3;
    char32_t character = byte & (0x3FU >> more);
    for (int i = 0; i < more; ++i)
        character = character << 6 | (static_cast<unsigned char>(*at++) & 0x3FU);
    return character;
}

void append(std::u16string &text, char32_t character) {
    if (character >= 0x10000) {
        text += static_cast<char16_t>(0xD7C0 + (character >> 10));
        text += static_cast<char16_t>(0xDC00 + (character & 0x3FF));
    } else {
        text += static_cast<char16_t>(character);
    }
}

} // namespace

std::optional<std::string_view> plain_text::read(const raw_text &raw, plain_encoding encoding, place where) {
    wide_.clear();
    for (const char *at = raw.begin; at != raw.end;) {
        char32_t character = 0;
        if (*at == '&' && where != IN_CDATA) {
            at = read_reference(at, character);
        } else if (*at == '\r') {
            at += at[1] == '\n' ? 2 : 1; // the byte after the text is no line end
            character = where == IN_ATTRIBUTE ? ' ' : '\n';
        } else if (where == IN_ATTRIBUTE && is_space(*at)) {
            ++at;
            character = ' ';
        } else {
            character = next_character(at, encoding);
        }
        append(wide_, character);
    }
    return narrowed();
}

std::optional<std::string_view> plain_text::narrowed() {
    const auto is_ascii = [](char16_t c) { return c < 0x80; };
    if (std::all_of(wide_.begin(), wide_.end(), is_ascii)) {
        narrow_.assign(wide_.begin(), wide_.end());
        return narrow_;
    }
    try {
        if (!platform_) {
            platform_.emplace();
            platform_hold::keep_for_thread();
        }
    } catch (const xercesc::XMLException &) {
        return std::nullopt; // the XML library will report it
    }
    const transcoded narrow = transcode(wide_.c_str());
    if (!narrow)
        return std::nullopt;
    narrow_ = narrow.get();
    return narrow_;
}

bool is_white(std::string_view raw) { return std::all_of(raw.begin(), raw.end(), is_space); }

} // namespace zeb5
