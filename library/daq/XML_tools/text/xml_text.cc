#include "text/xml_text.h"

#include <charconv>
#include <cstdio>
#include <utility>

namespace zeb5 {

xml_text::xml_text(std::string text, std::size_t expected) : text_(std::move(text)) {
    text_.clear();
    text_.reserve(expected + 2 * call_room);
    end_ = text_.data();
    grow();
}

std::string xml_text::take() {
    text_.resize(static_cast<std::size_t>(end_ - text_.data()));
    if (text_.capacity() / 2 > text_.size())
        text_.shrink_to_fit(); // callers may keep many small documents
    return std::move(text_);
}

void xml_text::put(std::string_view text) {
    for (std::size_t begin = 0; begin < text.size(); begin += call_room) {
        make_room();
        const std::string_view next = text.substr(begin, call_room);
        std::memcpy(end_, next.data(), next.size());
        end_ += next.size();
    }
}

void xml_text::put_float(const element_tags &name, float number, const char *format) {
    make_room();
    char *const value = copy(end_, name.start);
    const int length = std::snprintf(value, 64, format, static_cast<double>(number)); // at most 48 bytes
    end_ = copy(value + length, name.end);
}

char *xml_text::copy_blocks(char *at, const char *from, const char *end) {
    for (; from != end; from += block_bytes, at += block_bytes)
        if (const unsigned nuls = copy_block(at, from))
            return at + std::countr_zero(nuls);
    return at;
}

char *xml_text::copy_number(char *at, std::int32_t number) { return std::to_chars(at, at + 16, number).ptr; }

void xml_text::grow() {
    // resize() fills the new room with NULs. In small steps these stay in the processor's cache until text
    // overwrites them. That costs less than building the text elsewhere and copying it at the end.
    constexpr std::size_t step = 1536;
    const auto length = static_cast<std::size_t>(end_ - text_.data());
    text_.resize(length + call_room + step);
    end_ = text_.data() + length;
    last_with_room_ = end_ + step;
}

} // namespace zeb5
