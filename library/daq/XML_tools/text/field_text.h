#ifndef ZEB5_FIELD_TEXT_H
#define ZEB5_FIELD_TEXT_H

/// Text in the fixed fields of records.

#include <cstddef>
#include <cstring>
#include <string_view>

namespace zeb5 {

/// Copies `text` into a fixed field, cut to its size less one, and adds a NUL; the rest of the field is left
/// as it was.
template <std::size_t N> void copy_text(char (&field)[N], std::string_view text) {
    const std::size_t length = text.size() < N ? text.size() : N - 1;
    std::memcpy(field, text.data(), length);
    field[length] = '\0';
}

/// Returns the text of a fixed field; the whole field when somebody has overwritten the NUL.
template <std::size_t N> std::string_view field_text(const char (&field)[N]) {
    return {field, strnlen(field, N)};
}

template <std::size_t N, std::size_t M> void copy_text(char (&field)[N], const char (&from)[M]) {
    copy_text(field, field_text(from));
}

/// Returns the name, or for an empty one the text that readers of written lists know.
template <std::size_t N> const char (&name_or_undefined(const char (&name)[N]))[N] {
    static constexpr char undefined[N] = "!!!UNDEFINED!!!";
    return name[0] ? name : undefined;
}

} // namespace zeb5

#endif
