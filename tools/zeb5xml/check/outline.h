#ifndef ZEB5XML_OUTLINE_H
#define ZEB5XML_OUTLINE_H

#include <cstddef>
#include <string_view>
#include <vector>

/// A part of the text of an element.
struct text_piece {
    enum kind {
        TEXT,
        REFERENCE, // with its ampersand and semicolon
        CDATA,     // without its marks
        ASIDE      // a comment or an instruction, which has no text
    };
    kind what;
    std::string_view text;
    std::size_t at; // where it begins in the document
};

struct outline_attribute {
    std::string_view name;
    std::string_view value; // as written
    std::size_t at;         // where its name begins in the document
};

/// An element of the document with its place. Texts are views of the document.
struct outline_element {
    static constexpr std::size_t none = static_cast<std::size_t>(-1);

    std::size_t at; // of its `<`
    std::string_view name;
    std::size_t parent; // number of the element around it; none for the root
    std::size_t first_attribute = 0;
    std::size_t attributes = 0;
    std::size_t first_piece = 0; // of the text before its first child
    std::size_t pieces = 0;
    std::size_t later_text = none; // where text begins that follows a child
    bool is_closed = false;
};

/// The elements of a document in the order of their start tags.
struct outline {
    std::vector<outline_element> elements;
    std::vector<outline_attribute> attributes;
    std::vector<text_piece> pieces;
    std::size_t doctype = outline_element::none; // where the document type declaration begins
    bool has_entities = false;                   // it declares entities of its own
};

/// Finds the elements in the first `length` bytes of a text, in one pass. The text may hold anything: what is
/// not closed ends with it.
outline outline_of(std::string_view text, std::size_t length);

#endif
