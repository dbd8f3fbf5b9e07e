#ifndef ZEB5XML_TEXT_PLACES_H
#define ZEB5XML_TEXT_PLACES_H

#include <cstddef>
#include <string_view>

/// A place as editors show it. Both numbers count from 1, and columns count characters.
struct text_place {
    std::size_t line = 1;
    std::size_t column = 1;
};

/// Turns offsets in a UTF-8 text into places. A line ends as XML says: with a line feed, a carriage return or
/// both.
class text_places {
public:
    explicit text_places(std::string_view text) : text_(text) {}

    /// Takes a single pass over the text if offsets come in ascending order.
    text_place place_of(std::size_t offset);

private:
    void go_to(std::size_t offset);

    std::string_view text_;
    std::size_t at_ = 0;
    text_place here_;
};

/// Returns the offset of a place; the end of its line, or of the text, when that is shorter.
std::size_t offset_of(std::string_view text, text_place place);

#endif
