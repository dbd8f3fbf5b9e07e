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
    bool is_wide = false;           // it is in UTF-16 under another label
    std::size_t malformed = none;   // where in `text` the first malformed byte was, which is U+FFFD there
    std::string malformed_bytes;    // the byte, as "0xE4"
    std::size_t mislabelled = none; // where the first bytes stand that are UTF-8 under another label
    std::size_t control = none;     // where the first control character stands that would be a sign in
                                    // windows-1252
};

/// Decodes what the XML declaration, a byte order mark or the first bytes say. Bytes of an encoding that
/// nobody knows are taken for ISO-8859-1.
decoded_text decode(std::string_view bytes);

#endif
