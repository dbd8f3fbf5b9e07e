#ifndef ZEB5_PLAIN_SCANNER_H
#define ZEB5_PLAIN_SCANNER_H

/// The tokens of a plain document, one after the other: tags, texts and all else that stands in it.
///
/// A document is plain when the scanner surely reads it as the XML library does: it is in UTF-8, ISO-8859-1
/// or ASCII, has no declaration but the XML declaration, and has names in ASCII. The scanner has no messages
/// of its own. It stops at the first thing that is not plain or not well-formed, and the XML library reads
/// the document.

#include <array>
#include <bit>
#include <cstddef>
#include <span>
#include <string_view>

#include "steps/element_names.h"
#include "steps/plain_characters.h"
#include "steps/plain_window.h"
#include "text/byte_block.h"

namespace zeb5 {

/// A piece of the document as it stands there, and notes of what in it must be converted.
struct raw_text {
    const char *begin;
    const char *end;
    bool has_references;
    bool has_line_ends; // carriage returns, which become line feeds; in attributes, all white space, which
                        // becomes blanks
    bool has_wide;      // characters beyond ASCII

    std::string_view bytes() const { return {begin, end}; }
    bool is_as_read() const { return !has_references && !has_line_ends && !has_wide; }
};

struct raw_attribute {
    std::string_view name;
    raw_text value;
};

enum class plain_token {
    START,     // element(), attributes, is_empty()
    END,       // element()
    TEXT,      // text(), which is not empty
    CDATA,     // text()
    ASIDE,     // a comment or a processing instruction
    FINISHED,  // the document's end
    NOT_PLAIN, // or not readable
    MORE       // never handed out: the token reaches the limit
};

class plain_scanner {
public:
    explicit plain_scanner(plain_window &window) : window_(window) {}
    plain_scanner(const plain_scanner &) = delete;
    plain_scanner &operator=(const plain_scanner &) = delete;

    /// Reads the XML declaration, if there is one. Returns false when the document is not plain.
    bool start();

    /// Returns the next token. Its details, below, last until the next call; names last as long as the
    /// scanner.
    plain_token next();

    element_name &element() const { return *element_; }
    /// Whether the tag is an empty-element tag, which has no token END.
    bool is_empty() const { return is_empty_; }
    std::span<const raw_attribute> attributes() const { return {attributes_.data(), attribute_count_}; }
    const raw_text &text() const { return text_; }
    plain_encoding encoding() const { return encoding_; }

    /// Whether the scanner is before or after the root.
    bool is_outside() const { return open_ == stack_.data(); }

    void set_rows(row_finder find) { names_.set_rows(find); }

protected:
    static constexpr std::size_t most_depth = 64;

    /// Returns the end of the printable ASCII text that `at` begins with: the place of a character that means
    /// something, or a place behind the limit.
    const char *skip_plain_text(const char *at) const {
        for (; at < limit_; at += block_bytes)
            if (const unsigned stops = stops_in(load_block(at)))
                return at + std::countr_zero(stops);
        return at;
    }

    std::array<element_name *, most_depth + 1> stack_; // the first entry means that none is open
    element_name **open_ = stack_.data();              // the innermost open element
    element_name *last_ = nullptr;                     // of the last start tag
    const char *at_ = nullptr;                         // where the next token begins
    const char *limit_ = nullptr;                      // the window's
    const char *quick_limit_ = nullptr; // tags of quick names that begin before this end before the limit

private:
    static constexpr std::size_t most_attributes = 16;
    static constexpr std::ptrdiff_t most_quick_tag = element_name::most_quick_bytes + 3;

    /// Returns a mask of the bytes that end a run of plain text: '<', '&', ']', control characters and what
    /// is not ASCII.
    static unsigned stops_in(byte_block block) {
        return top_bits((block == '<') | (block == '&') | (block == ']') | is_control_or_wide(block));
    }

    plain_token scan();
    plain_token scan_outside();
    plain_token scan_start_tag();
    plain_token scan_end_tag();
    plain_token scan_text();
    plain_token scan_cdata();
    plain_token scan_comment();
    plain_token scan_instruction();
    plain_token take(plain_token token, const char *end);
    element_name *name_at(const char *at);
    const char *scan_attributes(const char *at);
    const char *scan_attribute(const char *at);
    void begin_element(element_name *name, bool is_empty);

    plain_window &window_;
    plain_encoding encoding_ = plain_encoding::UTF_8;
    bool is_empty_ = false;
    element_name *element_ = nullptr;
    raw_text text_{};
    std::size_t attribute_count_ = 0;
    std::array<raw_attribute, most_attributes> attributes_;
    element_names names_;
};

} // namespace zeb5

#endif
