/// Documents in other encodings, and such that are in none, through every reader.

#include <gtest/gtest.h>

#include "every_reader.h"
#include "silence.h"

namespace {

/// The characters of a text in UTF-8.
std::vector<std::uint32_t> characters(const std::string &text) {
    std::vector<std::uint32_t> all;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if ((byte & 0xC0) == 0x80)
            all.back() = all.back() << 6 | (byte & 0x3F);
        else
            all.push_back(byte < 0x80 ? byte : byte < 0xE0 ? byte & 0x1F : byte & 0x0F);
    }
    return all;
}

enum byte_order { LITTLE, BIG };

/// Units of `Size` bytes after a byte order mark; the sample texts need no surrogates.
template <int Size, byte_order Order> std::string wide(const std::string &text) {
    std::vector<std::uint32_t> units = characters(text);
    units.insert(units.begin(), 0xFEFF);
    std::string all;
    for (const std::uint32_t unit : units)
        for (int i = 0; i < Size; ++i)
            all += static_cast<char>(unit >> 8 * (Order == LITTLE ? i : Size - 1 - i) & 0xFF);
    return all;
}

std::string marked(const std::string &text) { return "\xef\xbb\xbf" + text; }

std::string declared(const std::string &text, const std::string &encoding) {
    const std::string body = text.starts_with("<?xml") ? text.substr(text.find("?>") + 2) : text;
    return "<?xml version=\"1.0\" encoding=\"" + encoding + "\"?>" + body;
}

std::string latin_1(const std::string &text) {
    std::string all;
    for (const std::uint32_t c : characters(text))
        all += c < 0x100 ? static_cast<char>(c) : '?';
    return declared(all, "ISO-8859-1");
}

std::string unknown(const std::string &text) { return declared(text, "x-unheard-of"); }

/// With something before the last text or tag begins.
std::string spoilt(const std::string &text, const std::string &what) {
    std::string all = text;
    return all.insert(all.rfind('<'), what);
}
std::string with_nul(const std::string &text) { return spoilt(text, std::string(1, '\0')); }
std::string with_lone_byte(const std::string &text) { return spoilt(text, "\xff"); }
std::string with_overlong_slash(const std::string &text) { return spoilt(text, "\xc0\xaf"); }
std::string with_surrogate(const std::string &text) { return spoilt(text, "\xed\xa0\x80"); }
std::string with_five_bytes(const std::string &text) { return spoilt(text, "\xf8\x88\x80\x80\x80"); }
std::string with_cut_character(const std::string &text) { return spoilt(text, "\xe2\x82"); }

enum result { SAME, ERROR };

struct encoding_case {
    const char *name;
    std::string (*encode)(const std::string &text);
    result in_file, in_memory; // a text in memory ends at its first NUL
};

const encoding_case encoding_cases[] = {
    {"UTF-8 with a mark", marked, SAME, SAME},
    {"UTF-16, little end first", wide<2, LITTLE>, SAME, ERROR},
    {"UTF-16, big end first", wide<2, BIG>, SAME, ERROR},
    {"UTF-32, little end first", wide<4, LITTLE>, SAME, ERROR},
    {"UTF-32, big end first", wide<4, BIG>, SAME, ERROR},
    {"an unknown encoding", unknown, ERROR, ERROR},
    {"a NUL", with_nul, ERROR, ERROR},
    {"a byte that begins nothing", with_lone_byte, ERROR, ERROR},
    {"a slash of two bytes", with_overlong_slash, ERROR, ERROR},
    {"half a pair", with_surrogate, ERROR, ERROR},
    {"a character of five bytes", with_five_bytes, ERROR, ERROR},
    {"a character cut off", with_cut_character, ERROR, ERROR},
};

TEST(Encodings, AreReadOrCountedByEveryReader) {
    for (const reader_row &reader : every_reader) {
        const std::string &document = good_documents[reader.kind];
        const auto read = [&reader](const std::string &text) {
            const silence quiet;
            reader_source source(reader, text);
            return reader.read(source.get());
        };
        const reading usual = read(document);
        for (const encoding_case &c : encoding_cases) {
            const reading seen = read(c.encode(document));
            EXPECT_STREQ(seen.thrown, "") << reader.name << ", " << c.name;
            if ((reader.from_file ? c.in_file : c.in_memory) == SAME)
                EXPECT_EQ(seen, usual) << reader.name << ", " << c.name;
            else
                EXPECT_NE(seen.result, usual.result) << reader.name << ", " << c.name;
        }
    }
}

// What it has for more than Latin-1 is lost in the writing of the test, not in the reading
TEST(Encodings, OfLatin1AreReadByEveryReader) {
    for (const reader_row &reader : every_reader) {
        const std::string &document = good_documents[reader.kind];
        if (document.find("\xe2\x82\xac") != std::string::npos)
            continue;
        const silence quiet;
        reader_source plain(reader, document), latin(reader, latin_1(document));
        EXPECT_EQ(reader.read(latin.get()), reader.read(plain.get())) << reader.name;
    }
}

} // namespace
