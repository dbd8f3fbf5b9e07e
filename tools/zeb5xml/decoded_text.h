#ifndef ZEB5XML_DECODED_TEXT_H
#define ZEB5XML_DECODED_TEXT_H

#include <cstddef>
#include <string>
#include <string_view>

/// The characters of a document, in UTF-8, whatever its encoding is.
struct decoded_text {
    static constexpr std::size_t none = std::string::npos;

    std::string text;               // without a byte order mark
    std::string label;              // the encoding that the XML declaration names; empty: none
    std::size_t malformed = none;   // where in `text` the first malformed byte was, which is U+FFFD there
    std::string malformed_bytes;    // the byte, as "0xE4"
    std::size_t mislabelled = none; // where the first bytes stand that are UTF-8 under another label
};

/// Decodes UTF-8 and UTF-16. Bytes of any other encoding are taken for ISO-8859-1.
decoded_text decode(std::string_view bytes);

#endif
