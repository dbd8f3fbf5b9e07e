#ifndef ZEB5_FIELD_TEXT_H
#define ZEB5_FIELD_TEXT_H

/// Text in the fixed fields of records.

#include <cstddef>
#include <cstring>
#include <string_view>

namespace zeb5 {

/// Copies `text` into a fixed field, cut at its size less one; the rest of the field is left as it was.
template <std::size_t N> void copy_text(char (&field)[N], std::string_view text) {
    const std::size_t length = text.size() < N ? text.size() : N - 1;
    std::memcpy(field, text.data(), length);
    field[length] = '\0';
}

/// The text of a fixed field; all of it when somebody has overwritten its end.
template <std::size_t N> std::string_view field_text(const char (&field)[N]) {
    return {field, strnlen(field, N)};
}

template <std::size_t N, std::size_t M> void copy_text(char (&field)[N], const char (&from)[M]) {
    copy_text(field, field_text(from));
}

/// A name, or what readers of written lists know for one that is not given.
template <std::size_t N> const char (&name_or_undefined(const char (&name)[N]))[N] {
    static constexpr char undefined[N] = "!!!UNDEFINED!!!";
    return name[0] ? name : undefined;
}

} // namespace zeb5

#endif
