#include "words/text_places.h"

#include <algorithm>

#include "words/utf_8.h"

text_place text_places::place_of(std::size_t offset) {
    if (offset < at_) {
        at_ = 0;
        here_ = {};
    }
    go_to(std::min(offset, text_.size()));
    return here_;
}

void text_places::go_to(std::size_t offset) {
    for (; at_ < offset; ++at_) {
        const char c = text_[at_];
        const bool is_half = c == '\r' && at_ + 1 < text_.size() && text_[at_ + 1] == '\n';
        if (c == '\n' || (c == '\r' && !is_half)) {
            ++here_.line;
            here_.column = 1;
        } else if (!continues_character(c))
            ++here_.column;
    }
}

std::size_t offset_of(std::string_view text, text_place place) {
    std::size_t at = 0;
    for (std::size_t line = 1; line < place.line; ++line) {
        const std::size_t end = text.find_first_of("\r\n", at);
        if (end == text.npos)
            return text.size();
        at = end + (text.substr(end, 2) == "\r\n" ? 2 : 1);
    }
    for (std::size_t column = 1; column < place.column && at < text.size(); ++column) {
        if (text[at] == '\n' || text[at] == '\r')
            break;
        do
            ++at;
        while (at < text.size() && continues_character(text[at]));
    }
    return at;
}
