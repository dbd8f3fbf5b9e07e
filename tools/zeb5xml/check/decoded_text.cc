#include "check/decoded_text.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <iconv.h>

#include "words/utf_8.h"

namespace {

constexpr char32_t replacement = 0xFFFD;

unsigned char byte_at(std::string_view bytes, std::size_t at) {
    return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0;
}

void note_malformed(decoded_text &result, char byte) {
    if (result.malformed != decoded_text::none)
        return;
    result.malformed = result.text.size();
    result.malformed_bytes = "0x" + hexadecimal_digits(byte);
}

void decode_utf_8(decoded_text &result, std::string_view bytes) {
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t length = character_length(bytes, at);
        if (length == 0) {
            note_malformed(result, bytes[at++]);
            append_character(result.text, replacement);
        } else {
            result.text.append(bytes, at, length);
            at += length;
        }
    }
}

/// `high` is the place of the higher byte in each pair of bytes.
void decode_utf_16(decoded_text &result, std::string_view bytes, std::size_t high) {
    const auto unit = [&](std::size_t at) {
        return static_cast<char32_t>(byte_at(bytes, at + high) << 8 | byte_at(bytes, at + 1 - high));
    };
    for (std::size_t at = 0; at < bytes.size(); at += 2) {
        const char32_t first = unit(at);
        const bool is_surrogate = first >= 0xD800 && first < 0xE000;
        const char32_t second = is_surrogate && at + 4 <= bytes.size() ? unit(at + 2) : 0;
        if (!is_surrogate && at + 2 <= bytes.size()) {
            append_character(result.text, first);
        } else if (first < 0xDC00 && second >= 0xDC00 && second < 0xE000) {
            append_character(result.text, 0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00));
            at += 2;
        } else {
            note_malformed(result, bytes[at]);
            append_character(result.text, replacement);
        }
    }
}

/// What windows-1252 has where ISO-8859-1 has control characters, from 0x80 on.
constexpr char32_t windows_1252[] = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                     0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D,   0x017D, 0x8F,
                                     0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                     0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

/// Decodes ISO-8859-1 or windows-1252, and looks for bytes of other encodings.
void decode_single_bytes(decoded_text &result, std::string_view bytes, bool is_windows) {
    bool is_utf_8 = true; // so far, beyond ASCII
    for (std::size_t at = 0, next = 0; at < bytes.size(); ++at) {
        const unsigned char byte = byte_at(bytes, at);
        if (byte >= 0x80 && at >= next && is_utf_8) {
            const std::size_t length = character_length(bytes, at);
            is_utf_8 = length > 1;
            next = at + length;
            if (is_utf_8 && result.mislabelled == decoded_text::none)
                result.mislabelled = result.text.size();
        }
        const bool is_control = byte >= 0x80 && byte < 0xA0;
        if (is_control && !is_windows && result.control == decoded_text::none)
            result.control = result.text.size();
        append_character(result.text, is_control && is_windows ? windows_1252[byte - 0x80] : byte);
    }
    if (is_utf_8)
        result.control = decoded_text::none;
    else
        result.mislabelled = decoded_text::none;
}

/// Decodes any encoding that the C library knows. Returns false for one that it does not know.
bool decode_named(decoded_text &result, std::string_view bytes, const std::string &name) {
    const iconv_t converter = iconv_open("UTF-8", name.c_str());
    if (converter == reinterpret_cast<iconv_t>(-1))
        return false;
    std::string input(bytes), block(65536, '\0');
    char *from = input.data();
    for (std::size_t left = input.size(); left > 0;) {
        char *to = block.data();
        std::size_t room = block.size();
        const std::size_t done = iconv(converter, &from, &left, &to, &room);
        result.text.append(block, 0, block.size() - room);
        if (done == static_cast<std::size_t>(-1) && errno != E2BIG) {
            note_malformed(result, *from);
            append_character(result.text, replacement);
            ++from;
            --left;
        }
    }
    iconv_close(converter);
    return true;
}

/// Returns what the XML declaration at the beginning says about the encoding.
std::string encoding_label(std::string_view text) {
    if (text.substr(0, 5) != "<?xml")
        return "";
    const std::string_view declaration = text.substr(0, std::min(text.find("?>"), std::size_t{1000}));
    const std::size_t name = declaration.find("encoding");
    const std::size_t quote = declaration.find_first_of("\"'", name == declaration.npos ? name : name + 8);
    if (name == declaration.npos || quote == declaration.npos)
        return "";
    const std::size_t end = declaration.find(declaration[quote], quote + 1);
    return std::string(declaration.substr(quote + 1, std::min(end, declaration.size()) - quote - 1));
}

bool is_one_of(std::string label, std::initializer_list<const char *> names) {
    std::transform(label.begin(), label.end(), label.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return std::find(names.begin(), names.end(), label) != names.end();
}

void decode_labelled(decoded_text &result, std::string_view bytes) {
    if (is_one_of(result.label, {"", "utf-8", "utf8"}))
        return decode_utf_8(result, bytes);
    const bool is_windows = is_one_of(result.label, {"windows-1252", "cp1252"});
    const bool is_latin_1 = is_one_of(result.label, {"iso-8859-1", "iso8859-1", "iso_8859-1", "latin1",
                                                     "latin-1", "l1", "us-ascii", "ascii"});
    if (is_windows || is_latin_1 || !decode_named(result, bytes, result.label))
        decode_single_bytes(result, bytes, is_windows);
}

/// Encodings of which the first bytes are not those of ASCII.
struct first_bytes {
    std::string_view bytes;
    const char *encoding;
};
using namespace std::string_view_literals;
constexpr first_bytes strange_begins[] = {
    {"\x4C\x6F\xA7\x94"sv, "IBM037"}, {"\0\0\0<"sv, "UTF-32BE"}, {"<\0\0\0"sv, "UTF-32LE"}};

} // namespace

decoded_text decode(std::string_view bytes) {
    decoded_text result;
    for (const first_bytes &one : strange_begins)
        if (bytes.substr(0, 4) == one.bytes) {
            decode_named(result, bytes, one.encoding);
            result.label = encoding_label(result.text);
            return result;
        }
    const std::string_view start = bytes.substr(0, 2);
    if (start == "\xFF\xFE"sv || start == "\xFE\xFF"sv) {
        decode_utf_16(result, bytes.substr(2), start == "\xFF\xFE"sv ? 1 : 0);
    } else if (start == "<\0"sv || start == "\0<"sv) {
        decode_utf_16(result, bytes, start == "<\0"sv ? 1 : 0);
    } else {
        const bool has_mark = bytes.substr(0, 3) == "\xEF\xBB\xBF"sv;
        const std::string_view content = bytes.substr(has_mark ? 3 : 0);
        result.label = encoding_label(content);
        result.text.reserve(content.size());
        if (has_mark)
            decode_utf_8(result, content);
        else
            decode_labelled(result, content);
        return result;
    }
    result.label = encoding_label(result.text);
    result.is_wide = !is_one_of(result.label.substr(0, 6), {"", "utf-16"});
    return result;
}
