#ifndef ZEB5_PLAIN_TEXT_H
#define ZEB5_PLAIN_TEXT_H

/// What the raw texts of a plain document say: references, line ends and characters beyond ASCII, as the XML
/// library hands them out in the local code.

#include <optional>
#include <string>
#include <string_view>

#include "steps/plain_scanner.h"
#include "xml_platform.h"

namespace zeb5 {

/// Reads raw texts of one document. What is returned lasts until the next call, and no longer than the raw
/// text; it is nullopt where the local code has nothing for the text, or the platform does not come up, which
/// gives the transcoder.
class plain_text {
public:
    /// Text of an element.
    std::optional<std::string_view> content(const raw_text &raw, plain_encoding encoding) {
        return raw.is_as_read() ? raw.bytes() : read(raw, encoding, IN_CONTENT);
    }
    /// Value of an attribute.
    std::optional<std::string_view> attribute(const raw_text &raw, plain_encoding encoding) {
        return raw.is_as_read() ? raw.bytes() : read(raw, encoding, IN_ATTRIBUTE);
    }
    /// CDATA section. An "&" is no reference there.
    std::optional<std::string_view> cdata(const raw_text &raw, plain_encoding encoding) {
        return raw.is_as_read() ? raw.bytes() : read(raw, encoding, IN_CDATA);
    }

private:
    enum place { IN_CONTENT, IN_ATTRIBUTE, IN_CDATA };

    std::optional<std::string_view> read(const raw_text &raw, plain_encoding encoding, place where);
    std::optional<std::string_view> narrowed();

    std::u16string wide_;
    std::string narrow_;
    std::optional<xml_platform> platform_; // once a text needs the transcoder
};

/// Blanks, tabs and line ends only, as they stand in the document.
bool is_white(std::string_view raw);

} // namespace zeb5

#endif
