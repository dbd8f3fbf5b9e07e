#include "xml_text.h"

#include <charconv>
#include <cstdio>
#include <new>

namespace zeb5 {

namespace {

char *copy(char *at, const short_piece &piece) { return piece.copy_to(at); }

/// The text of a fixed field; all of it when somebody has overwritten its end.
char *copy(char *at, const char *field, std::size_t size) {
    char *const behind = static_cast<char *>(memccpy(at, field, '\0', size));
    return behind ? behind - 1 : at + size;
}

char *copy(char *at, std::int32_t number) { return std::to_chars(at, at + 16, number).ptr; }

char *copy(char *at, float number, const char *format) {
    return at + std::snprintf(at, 64, format, static_cast<double>(number)); // at most 48 bytes
}

} // namespace

void xml_text::put(const short_piece &piece) { end_at(copy(end(), piece)); }

void xml_text::put(std::string_view text) {
    std::memcpy(end(), text.data(), text.size());
    size_ += text.size();
}

void xml_text::put_field(const char *field, std::size_t size) { end_at(copy(end(), field, size)); }

void xml_text::put(std::int32_t number) { end_at(copy(end(), number)); }

void xml_text::element_field(const element_tags &name, const char *field, std::size_t size) {
    end_at(copy(copy(copy(end(), name.start), field, size), name.end));
}

void xml_text::element(const element_tags &name, std::int32_t number) {
    end_at(copy(copy(copy(end(), name.start), number), name.end));
}

void xml_text::element(const element_tags &name, float number, const char *format) {
    end_at(copy(copy(copy(end(), name.start), number, format), name.end));
}

void xml_text::open(const element_tags &name) {
    put(name.start);
    line_end();
}

void xml_text::open(const element_tags &name, std::int32_t number) {
    put(name.start);
    put(number);
    line_end();
}

void xml_text::close(const element_tags &name) { put(name.end); }

void xml_text::grow() {
    const std::size_t wanted = 2 * capacity_ + 4 * part_room;
    char *const grown =
        static_cast<char *>(std::realloc(bytes_.get(), wanted)); // a large one moves without a copy
    if (!grown)
        throw std::bad_alloc();
    (void)bytes_.release();
    bytes_.reset(grown);
    capacity_ = wanted;
}

} // namespace zeb5
