#ifndef ZEB5_NARROW_TEXT_H
#define ZEB5_NARROW_TEXT_H

/// UTF-16 to the narrow text that the readers hand out, and narrow text into fixed fields.

#include <cstddef>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLString.hpp>

namespace zeb5 {

/// A string of the default transcoder's own; null for a null text.
struct transcoded_release {
    void operator()(char *text) const { xercesc::XMLString::release(&text); }
};
using transcoded = std::unique_ptr<char, transcoded_release>;

inline transcoded transcode(const XMLCh *text) { return transcoded(xercesc::XMLString::transcode(text)); }

/// The message of an exception that says why the platform did not come up: there is no transcoder then, so
/// what is not ASCII becomes a question mark.
std::string plain_message(const xercesc::XMLException &problem);

/// Whether the default transcoder leaves every ASCII character as it is. The XML platform must be up.
bool transcoder_keeps_ascii();

/// Storage for one narrow text after another; kept from text to text.
class narrow_buffer {
public:
    /// Makes room for `bytes` bytes; what it held before is lost when it has to grow.
    char *reserve(std::size_t bytes);
    void set_size(std::size_t size) { size_ = size; }

    char *bytes() { return bytes_.get(); }
    std::size_t capacity() const { return capacity_; }
    std::size_t size() const { return size_; }

private:
    std::unique_ptr<char[]> bytes_;
    std::size_t capacity_ = 0;
    std::size_t size_ = 0; // of the text, without its NUL
};

/// Narrows as the default transcoder does. The XML platform must be up.
class narrower {
public:
    /// Narrows the null-terminated `text` into `buffer`. `length` is what the parser says of it; a text with
    /// a null inside ends there, as with the transcoder. The result is NUL-terminated and lasts until the
    /// buffer's next use; null where the transcoder gives none.
    char *narrow(const XMLCh *text, std::size_t length, narrow_buffer &buffer);

private:
    char *narrow_any(const XMLCh *text, std::size_t length, narrow_buffer &buffer);

    /// Whether the transcoder leaves every ASCII character as it is; asked at the first text.
    enum { not_asked, yes, no } keeps_ascii_ = not_asked;
};

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

} // namespace zeb5

#endif
