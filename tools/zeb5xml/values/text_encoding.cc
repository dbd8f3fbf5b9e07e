#include "values/text_encoding.h"

#include <algorithm>

#include "words/utf_8.h"

namespace {

unsigned char byte_at(std::string_view bytes, size_t at) { return static_cast<unsigned char>(bytes[at]); }

bool holds_utf8(const value &one);

bool holds_utf8(const record &part) {
    return std::all_of(part.fields.begin(), part.fields.end(),
                       [](const value &one) { return holds_utf8(one); });
}

bool holds_utf8(const value &one) {
    if (const auto *text = std::get_if<std::string>(&one.content))
        return is_utf8(*text);
    if (const auto *list = std::get_if<texts>(&one.content))
        return std::all_of(list->begin(), list->end(), [](const std::string &text) { return is_utf8(text); });
    if (const auto *parts = std::get_if<std::vector<record>>(&one.content))
        return std::all_of(parts->begin(), parts->end(), [](const record &part) { return holds_utf8(part); });
    return true;
}

} // namespace

bool is_utf8(std::string_view bytes) {
    for (size_t at = 0; at < bytes.size();) {
        const size_t length = character_length(bytes, at);
        if (length == 0)
            return false;
        at += length;
    }
    return true;
}

text_encoding encoding_of(const value &one) { return holds_utf8(one) ? UTF_8 : LATIN_1; }

texts latin_1_fields(const record &fields, const record_type &type) {
    texts names;
    for (size_t i = 0; i < type.rows.size(); ++i)
        if (encoding_of(fields.fields[i]) == LATIN_1)
            names.push_back(type.rows[i].name);
    return names;
}

std::string utf8_text(std::string_view bytes, text_encoding encoding) {
    if (encoding == UTF_8)
        return std::string(bytes);
    std::string text;
    for (const char byte : bytes)
        append_character(text, static_cast<unsigned char>(byte));
    return text;
}

std::string latin_1_where_possible(std::string_view bytes) {
    std::string latin_1;
    for (size_t at = 0; at < bytes.size();) {
        const size_t length = std::max<size_t>(character_length(bytes, at), 1);
        const unsigned char lead = byte_at(bytes, at);
        if (length == 2 && lead <= 0xc3)
            latin_1 += static_cast<char>((lead & 0x03) << 6 | (byte_at(bytes, at + 1) & 0x3f));
        else
            latin_1 += bytes.substr(at, length);
        at += length;
    }
    return latin_1;
}

std::optional<std::string> latin_1_from_utf8(std::string_view text) {
    std::string bytes = latin_1_where_possible(text);
    // Each character that is in ISO-8859-1 gave one byte, so the way back gives the text again
    return utf8_text(bytes, LATIN_1) == text ? std::optional(std::move(bytes)) : std::nullopt;
}
