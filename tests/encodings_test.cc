/// Every reader reads documents in other encodings, and documents that are in no encoding.

#include <gtest/gtest.h>

#include "support/capture.h"
#include "support/every_reader.h"
#include "support/reader_forms.h"

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

/// Units of `Size` bytes; the sample texts need no surrogates.
template <int Size, byte_order Order> std::string unmarked(const std::string &text) {
    std::string all;
    for (const std::uint32_t unit : characters(text))
        for (int i = 0; i < Size; ++i)
            all += static_cast<char>(unit >> 8 * (Order == LITTLE ? i : Size - 1 - i) & 0xFF);
    return all;
}

/// The same after a byte order mark.
template <int Size, byte_order Order> std::string wide(const std::string &text) {
    return unmarked<Size, Order>("\xef\xbb\xbf" + text);
}

std::string marked(const std::string &text) { return "\xef\xbb\xbf" + text; }

std::string undeclared(const std::string &text) {
    return text.starts_with("<?xml") ? text.substr(text.find("?>") + 2) : text;
}

std::string declared(const std::string &text, const std::string &encoding) {
    return "<?xml version=\"1.0\" encoding=\"" + encoding + "\"?>" + undeclared(text);
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

// UTF-16 that is broken, or that nothing announces

template <byte_order Order> std::string unmarked_declared(const std::string &text) {
    return unmarked<2, Order>(declared(text, "UTF-16"));
}
template <byte_order Order> std::string unmarked_undeclared(const std::string &text) {
    return unmarked<2, Order>("<!--\xc3\xa4-->" + undeclared(text));
}
std::string with_half_a_unit(const std::string &text) { return wide<2, LITTLE>(text) + '<'; }
std::string without_half_a_unit(const std::string &text) {
    const std::string all = wide<2, LITTLE>(text);
    return all.substr(0, all.size() - 1);
}

/// With `unit` before the last tag begins.
template <std::uint32_t unit> std::string with_unit(const std::string &text) {
    const std::size_t at = text.rfind('<');
    return wide<2, LITTLE>(text.substr(0, at)) + static_cast<char>(unit & 0xFF) +
           static_cast<char>(unit >> 8) + unmarked<2, LITTLE>(text.substr(at));
}

// Columns where a document is refused, from the document before it was encoded

std::size_t at_first(const std::string &) { return 1; }
std::size_t at_second(const std::string &) { return 2; }
std::size_t behind_declaration(const std::string &text) { return text.size() - undeclared(text).size() + 1; }
std::size_t behind_encoding(const std::string &) { return unknown("").size() + 1; }
std::size_t at_last_tag(const std::string &text) {
    return characters(text.substr(0, text.rfind('<'))).size() + 1;
}
std::size_t in_last_tag(const std::string &text) { return at_last_tag(text) + 1; }
std::size_t at_end(const std::string &text) { return characters(text).size(); }

/// What is read of a document.
enum extent { ALL, ALL_BUT_THE_END, NO_ROOT, NOTHING };

struct ending {
    extent read;
    std::size_t (*column)(const std::string &document); // of the report
    const char *words;                                  // of the report, with ROOT for the name of the root
};

const ending whole = {ALL, nullptr, nullptr};
const ending not_xml = {NOTHING, at_first, "invalid document structure"};
const ending one_character = {NO_ROOT, at_second, "element name expected"};
const ending not_utf_8 = {NOTHING, at_first, "invalid byte '' at position 2 of a 3-byte sequence"};
const ending half_a_unit = {ALL_BUT_THE_END, at_end, "unterminated end tag 'ROOT'"};
const ending first_half = {ALL_BUT_THE_END, in_last_tag,
                           "leading surrogate character is not followed by a legal second character"};
const ending second_half = {ALL_BUT_THE_END, in_last_tag, "unexpected trailing surrogate character"};

struct encoding_case {
    const char *name;
    std::string (*encode)(const std::string &text);
    ending in_file, in_memory; // a text in memory ends at its first NUL
};

/// One that ends alike in a file and in memory.
encoding_case alike(const char *name, std::string (*encode)(const std::string &text), const ending &end) {
    return {name, encode, end, end};
}

/// Bytes that the XML library meets before the first tag, as it decodes far ahead. It shows bytes that are no
/// character as U+FFFD.
encoding_case bad_bytes(const char *name, std::string (*encode)(const std::string &text), const char *words) {
    return alike(name, encode, {NOTHING, behind_declaration, words});
}

const encoding_case encoding_cases[] = {
    alike("UTF-8 with a mark", marked, whole),
    {"UTF-16, little end first", wide<2, LITTLE>, whole, not_xml},
    {"UTF-16, big end first", wide<2, BIG>, whole, not_xml},
    {"UTF-16 without a mark, little end first", unmarked_declared<LITTLE>, whole, one_character},
    {"UTF-16 without a mark, big end first", unmarked_declared<BIG>, whole, not_xml},
    {"UTF-16 that nothing tells of, little end first", unmarked_undeclared<LITTLE>, not_utf_8, one_character},
    {"UTF-16 that nothing tells of, big end first", unmarked_undeclared<BIG>, not_utf_8, not_xml},
    {"UTF-16 with half a unit behind it", with_half_a_unit, whole, not_xml},
    {"UTF-16 without its last half unit", without_half_a_unit, half_a_unit, not_xml},
    {"UTF-16 with the first half of a pair", with_unit<0xD800>, first_half, not_xml},
    {"UTF-16 with the second half of a pair", with_unit<0xDC00>, second_half, not_xml},
    {"UTF-32, little end first", wide<4, LITTLE>, whole, not_xml},
    {"UTF-32, big end first", wide<4, BIG>, whole, not_xml},
    alike("an unknown encoding", unknown,
          {NOTHING, behind_encoding, "unable to create converter for 'X-UNHEARD-OF' encoding"}),
    alike("a NUL", with_nul,
          {ALL_BUT_THE_END, at_last_tag,
           "input ended before all started tags were ended; last tag started is 'ROOT'"}),
    bad_bytes("a byte that begins nothing", with_lone_byte,
              "invalid byte '\xef\xbf\xbd' at position 1 of a 6-byte sequence"),
    bad_bytes("a slash of two bytes", with_overlong_slash,
              "invalid byte '\xef\xbf\xbd' at position 1 of a 1-byte sequence"),
    bad_bytes("half a pair", with_surrogate,
              "irregular bytes '\xef\xbf\xbd' and '\xef\xbf\xbd' of a 3-byte sequence"),
    bad_bytes("a character of five bytes", with_five_bytes,
              "exceeded byte limit at byte '\xef\xbf\xbd' in a 5-byte sequence"),
    bad_bytes("a character cut off", with_cut_character,
              "invalid byte '<' at position 3 of a 3-byte sequence"),
};

/// A reading and all its messages, with DOCUMENT in place of the document's name.
struct told_reading {
    reading seen;
    std::string out, err;

    bool operator==(const told_reading &other) const = default;
};

std::ostream &operator<<(std::ostream &to, const told_reading &told) {
    return to << told.seen << "\nout: " << told.out << "\nerr: " << told.err;
}

told_reading read(const reader_row &reader, const std::string &document) {
    told_reading told;
    reader_source source(reader, document);
    const captured streams = capture([&] { told.seen = reader.read(source.get()); });
    told.out = streams.out;
    told.err = replace_all(streams.err, reader.from_file ? source.get() : "my_mem_info", "DOCUMENT");
    return told;
}

bool is_selector(const reader_row &reader) { return std::string(reader.name).starts_with("selector"); }
bool is_pull_reader(const reader_row &reader) { return std::string(reader.name).ends_with("pull reader"); }

/// Status and count of reports, as each reader puts them together.
int result_of_refused(const reader_row &reader, extent read) {
    if (is_selector(reader) || reader.kind == CAMERA)
        return 1;
    if (is_pull_reader(reader))
        return read == NOTHING ? 1000 : 1;
    return read == ALL_BUT_THE_END ? 1 : 2;
}

std::string report_of_refused(const std::string &document, const ending &end) {
    const std::size_t root = document.rfind("</") + 2;
    return "\nFatal Error at (file DOCUMENT, line 1, char " + std::to_string(end.column(document)) +
           "): " + replace_all(end.words, "ROOT", document.substr(root, document.size() - root - 1)) + '\n' +
           (end.read == NOTHING ? "scanFirst() failed\n" : "");
}

/// What a reader that makes `usual` of the document makes of it when it ends so.
told_reading ended(const reader_row &reader, const std::string &document, const ending &end,
                   const told_reading &usual) {
    if (end.read == ALL)
        return usual;
    told_reading told;
    if (reader.kind == CAMERA) {
        told.out = "An error occurred during parsing\n ";
    } else {
        if (end.read == ALL_BUT_THE_END)
            told = usual;
        if (end.read == ALL_BUT_THE_END && is_pull_reader(reader))
            told.seen.records.resize(usual.seen.records.size() - 2); // steps without a tag
        const std::string report = report_of_refused(document, end);
        told.err = is_selector(reader) ? report + report : report; // of two sources
    }
    told.seen.result = result_of_refused(reader, end.read);
    return told;
}

/// A data block without a text is refused before it is read.
told_reading refused_block() {
    told_reading told;
    told.seen.result = -4;
    return told;
}

TEST(Encodings, AreReadOrCountedByEveryReader) {
    for (const reader_row &reader : every_reader) {
        const std::string &document = good_documents[reader.kind];
        const told_reading usual = read(reader, document);
        for (const encoding_case &c : encoding_cases) {
            const std::string encoded = c.encode(document);
            const ending &end = reader.from_file ? c.in_file : c.in_memory;
            const bool is_empty_block = reader.read == read_channel_block && encoded[0] == '\0';
            const told_reading expected =
                is_empty_block ? refused_block() : ended(reader, document, end, usual);
            EXPECT_EQ(read(reader, encoded), expected) << reader.name << ", " << c.name;
        }
    }
}

// Characters beyond Latin-1 are lost when the test writes the document, not when a reader reads it
TEST(Encodings, OfLatin1AreReadByEveryReader) {
    for (const reader_row &reader : every_reader) {
        const std::string &document = good_documents[reader.kind];
        if (document.find("\xe2\x82\xac") != std::string::npos)
            continue;
        reader_source plain(reader, document), latin(reader, latin_1(document));
        reading of_plain, of_latin;
        {
            const silence quiet;
            of_plain = reader.read(plain.get());
            of_latin = reader.read(latin.get());
        }
        EXPECT_EQ(of_latin, of_plain) << reader.name;
    }
}

} // namespace
