#ifndef ZEB5_NARROW_TEXT_H
#define ZEB5_NARROW_TEXT_H

/// Converts UTF-16 to the narrow text that the readers hand out.

#include <cstddef>
#include <memory>
#include <optional>
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

/// Returns the message of an exception that says why the platform did not start. There is no transcoder then,
/// so each character that is not ASCII becomes a question mark.
std::string plain_message(const xercesc::XMLException &problem);

/// Must be called before a document is read, as the locale may have changed since the last one. A change of
/// the locale while a document is read takes effect with the next document.
void forget_local_code();

// Both narrow as the default transcoder does, so the XML platform must be up. `length` is the parser's length
// of the null-terminated `text`; a text with a null inside ends there, as with the transcoder.

/// Returns a copy, or null where the transcoder returns null. The caller releases it with
/// XMLString::release(), like the result of XMLString::transcode().
char *narrow(const XMLCh *text, std::size_t length);

/// Narrows one text after another into memory of its own, which stays valid when the platform goes down.
class narrower {
public:
    /// The result is NUL-terminated and lasts until the next call; nullopt where the transcoder returns null.
    std::optional<std::string_view> narrow(const XMLCh *text, std::size_t length);

private:
    std::string buffer_;
};

/// A text, or none, whose memory the next one uses again.
class reused_text {
public:
    void set(const XMLCh *text, std::size_t length) {
        text_ = nullptr;
        if (const auto narrow = narrower_.narrow(text, length))
            text_ = narrow->data();
    }
    void reset() { text_ = nullptr; }
    operator const char *() const { return text_; } // null: none

private:
    narrower narrower_;
    const char *text_ = nullptr;
};

} // namespace zeb5

#endif
