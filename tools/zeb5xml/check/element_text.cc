#include "check/element_text.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstdint>

#include "words/utf_8.h"

namespace {

struct known_entity {
    std::string_view reference;
    char character;
};
constexpr known_entity known_entities[] = {
    {"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}};

/// Appends the character that a reference stands for. Returns false for an entity of the document's own,
/// which is appended as it is written.
bool append_reference(std::string &text, std::string_view reference) {
    for (const known_entity &entity : known_entities)
        if (reference == entity.reference) {
            text += entity.character;
            return true;
        }
    if (reference.substr(0, 2) == "&#") {
        const bool is_hex = reference.substr(2, 1) == "x";
        std::uint32_t number = 0;
        std::from_chars(reference.data() + (is_hex ? 3 : 2), reference.data() + reference.size(), number,
                        is_hex ? 16 : 10);
        append_character(text, std::min(number, std::uint32_t{0x10FFFF}));
        return true;
    }
    text += reference;
    return false;
}

/// Appends a text with the line ends that a parser makes of it.
void append_lines(std::string &text, std::string_view written) {
    for (std::size_t at = 0; at < written.size(); ++at) {
        if (written[at] != '\r')
            text += written[at];
        else if (written.substr(at + 1, 1) != "\n")
            text += '\n';
    }
}

const char *cause_of(text_piece::kind what) {
    return what == text_piece::REFERENCE ? "a reference"
           : what == text_piece::CDATA   ? "a CDATA section"
                                         : "a comment or an instruction";
}

void add_cause(std::string &causes, const char *cause) {
    if (causes.find(cause) == causes.npos)
        causes.append(causes.empty() ? "" : ", ").append(cause);
}

/// First and last characters of ranges in which none is seen: control characters, marks of direction, and
/// blanks that are no white space of XML, such as the non-breaking one.
constexpr std::string_view unseen[][2] = {
    {{"\0", 1}, "\x1F"},
    {"\x7F", "\x7F"},
    {"\xC2\x80", "\xC2\xA0"},
    {"\xC2\xAD", "\xC2\xAD"},
    {"\xE2\x80\x80", "\xE2\x80\x8F"},
    {"\xE2\x80\xA8", "\xE2\x80\xAF"},
    {"\xE2\x81\x9F", "\xE2\x81\xAF"},
    {"\xE3\x80\x80", "\xE3\x80\x80"},
    {"\xEF\xBB\xBF", "\xEF\xBB\xBF"},
};

bool is_unseen(std::string_view character) {
    for (const auto &[first, last] : unseen)
        if (first <= character && character <= last)
            return true;
    return false;
}

std::string escaped(std::string_view bytes) {
    std::string result;
    for (const char byte : bytes)
        result += "\\x" + hexadecimal_digits(byte);
    return result;
}

/// A character as a reader of messages sees it for certain.
std::string shown_character(std::string_view character) {
    switch (character[0]) {
    case '\n':
        return "\\n";
    case '\t':
        return "\\t";
    case '\r':
        return "\\r";
    }
    return is_unseen(character) ? escaped(character) : std::string(character);
}

} // namespace

element_text text_of(const outline &document, const outline_element &element) {
    element_text result;
    std::size_t end_of_last = 0; // of the last piece that is not blank, if an aside follows it
    bool aside_seen = false;
    for (std::size_t i = 0; i < element.pieces; ++i) {
        const text_piece &piece = document.pieces[element.first_piece + i];
        const std::size_t start = result.whole.size();
        if (piece.what == text_piece::REFERENCE)
            result.has_entity |= !append_reference(result.whole, piece.text);
        else if (piece.what != text_piece::ASIDE)
            append_lines(result.whole, piece.text);
        const bool is_aside = piece.what == text_piece::ASIDE;
        if (element.pieces > 1) {
            if (!is_aside && result.piece_starts.empty())
                result.begins_blank = result.is_blank();
            if (!is_aside)
                result.piece_starts.push_back(start);
            if (piece.what != text_piece::TEXT)
                add_cause(result.causes, cause_of(piece.what));
        }
        aside_seen = aside_seen || is_aside;
        if (!is_aside && (!aside_seen || !trimmed(std::string_view(result.whole).substr(start)).empty()))
            end_of_last = result.whole.size();
    }
    constexpr std::size_t most_at_once = std::size_t{1} << 20; // characters that the parser hands over
    if (result.whole.size() > most_at_once && !result.is_split()) {
        result.piece_starts.push_back(0);
        result.causes = "its length";
    }
    result.begins_blank = result.begins_blank && end_of_last > 0 && !result.is_blank();
    result.whole.resize(end_of_last); // blanks behind a comment belong to no value
    return result;
}

std::string attribute_value(std::string_view written) {
    std::string value;
    for (std::size_t at = 0; at < written.size();) {
        const std::size_t end = written[at] == '&' ? written.find(';', at) : written.npos;
        if (end == written.npos) {
            const bool is_blank = written[at] == '\t' || written[at] == '\n' || written[at] == '\r';
            value += is_blank ? ' ' : written[at];
            ++at;
        } else {
            append_reference(value, written.substr(at, end + 1 - at));
            at = end + 1;
        }
    }
    return value;
}

std::string shown(std::string_view text, std::size_t most) {
    std::size_t end = std::min(text.size(), most);
    while (end > 0 && end < text.size() && continues_character(text[end]))
        --end; // not within a character
    std::string result;
    for (std::size_t i = 0; i < end;) {
        const std::size_t size = character_length(text, i);
        result += size == 0 ? escaped(text.substr(i, 1)) : shown_character(text.substr(i, size));
        i += std::max(size, std::size_t{1});
    }
    return result + (end < text.size() ? "..." : "");
}

std::string in_quotes(std::string_view text) { return "'" + shown(text) + "'"; }

std::string in_tag(std::string_view name) { return "<" + shown(name, 60) + ">"; }

std::string what_is_kept(std::string_view name, const element_text &text, std::string_view kept) {
    return "the text of " + in_tag(name) + " comes in pieces (" + text.causes + "): the reader keeps " +
           (kept.empty() ? "nothing of it" : "only " + in_quotes(kept));
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t from = std::min(text.find_first_not_of(blanks), text.size());
    return text.substr(from, text.find_last_not_of(blanks) + 1 - from);
}

bool is_padded(std::string_view text) {
    if (text.empty())
        return false;
    std::size_t last = text.size() - 1; // where the last character begins
    while (last > 0 && continues_character(text[last]))
        --last;
    return trimmed(text).size() != text.size() || is_unseen(text.substr(0, character_length(text, 0))) ||
           is_unseen(text.substr(last));
}
