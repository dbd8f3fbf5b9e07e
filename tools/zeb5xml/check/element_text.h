#ifndef ZEB5XML_ELEMENT_TEXT_H
#define ZEB5XML_ELEMENT_TEXT_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "check/outline.h"

/// The text of an element as its author meant it: pieces put together, references resolved.
struct element_text {
    std::string whole;
    std::vector<std::size_t> piece_starts; // in `whole`; empty when it is a single piece
    std::string causes;                    // what stands between the pieces
    bool has_entity = false; // a reference to an entity that the document declares, which stands as written

    bool begins_blank = false; // its first piece is blank, so that readers get nothing of the others

    bool is_split() const { return !piece_starts.empty(); }
    /// Whether a reader takes it for no text. A carriage return that came by a reference is one.
    bool is_blank() const { return whole.find_first_not_of(" \t\n") == whole.npos; }
};

element_text text_of(const outline &document, const outline_element &element);

/// Returns the value of an attribute with its references resolved.
std::string attribute_value(std::string_view written);

/// Returns a text for a message: cut behind `most` bytes, and with marks for what does not print.
std::string shown(std::string_view text, std::size_t most = 40);

/// Returns it in quotes.
std::string in_quotes(std::string_view text);

/// Returns the name of an element as messages show it.
std::string in_tag(std::string_view name);

/// Says what a reader keeps of a text that comes in pieces.
std::string what_is_kept(std::string_view name, const element_text &text, std::string_view kept);

/// Returns the part of a text without white space at both ends.
std::string_view trimmed(std::string_view text);

/// Whether a text has white space, or anything else that is not seen, at one of its ends.
bool is_padded(std::string_view text);

#endif
