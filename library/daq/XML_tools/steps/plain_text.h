#ifndef ZEB5_PLAIN_TEXT_H
#define ZEB5_PLAIN_TEXT_H

/// Converts the raw texts of a plain document to the texts that the XML library hands out: it resolves
/// references and line ends, and converts characters beyond ASCII to the local code.

#include <optional>
#include <string>
#include <string_view>

#include "steps/plain_scanner.h"
#include "xml_platform.h"

namespace zeb5 {

/// Reads raw texts of one document. The result lasts until the next call, and no longer than the raw text. It
/// is nullopt where the local code cannot represent the text, or where the platform, which has the
/// transcoder, does not start.
class plain_text {
public:
    /// Reads the text of an element.
    std::optional<std::string_view> content(const raw_text &raw, plain_encoding encoding) {
        return raw.is_as_read() ? raw.bytes() : read(raw, encoding, IN_CONTENT);
    }
    /// Reads the value of an attribute.
    std::optional<std::string_view> attribute(const raw_text &raw, plain_encoding encoding) {
        return raw.is_as_read() ? raw.bytes() : read(raw, encoding, IN_ATTRIBUTE);
    }
    /// Reads a CDATA section, in which "&" begins no reference.
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

/// Whether a raw text has only blanks, tabs and line ends.
bool is_white(std::string_view raw);

} // namespace zeb5

#endif
