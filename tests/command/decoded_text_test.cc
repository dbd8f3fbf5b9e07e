/// The characters of a document in any encoding.

#include <gtest/gtest.h>

#include "check/decoded_text.h"

namespace {

using namespace std::string_literals;

std::string decoded(const std::string &bytes) {
    const decoded_text result = decode(bytes);
    std::string text = result.text;
    if (result.malformed != decoded_text::none)
        text += " | malformed " + result.malformed_bytes + " at " + std::to_string(result.malformed);
    if (result.control != decoded_text::none)
        text += " | control at " + std::to_string(result.control);
    if (result.is_wide)
        text += " | wide";
    if (result.mislabelled != decoded_text::none)
        text += " | mislabelled at " + std::to_string(result.mislabelled);
    return text;
}

TEST(DecodedText, IsUtf8WhateverTheEncoding) {
    struct encoded {
        std::string bytes, text;
    };
    const encoded cases[] = {
        {"<a>\xC3\xA4</a>", "<a>\xC3\xA4</a>"},
        {"\xEF\xBB\xBF<a/>", "<a/>"},
        {"\xFF\xFE<\0\xE4\0\x3D\xD8\x00\xDE"s, "<\xC3\xA4\xF0\x9F\x98\x80"},
        {"\xFE\xFF\0<\0a"s, "<a"},
        {"<\0a\0>\0"s, "<a>"},
        {"\0<\0a"s, "<a"},
        {"<?xml version='1.0' encoding='ISO-8859-1'?>\xE4",
         "<?xml version='1.0' encoding='ISO-8859-1'?>\xC3\xA4"},
        {"<?xml encoding=\"latin1\"?>\xC3\xA4",
         "<?xml encoding=\"latin1\"?>\xC3\x83\xC2\xA4 | mislabelled at 25"},
        {"<?xml encoding=\"latin1\"?>\xC3\xA4\xE4", "<?xml encoding=\"latin1\"?>\xC3\x83\xC2\xA4\xC3\xA4"},
        {"<?xml encoding=\"latin1\"?>\x80\xE4",
         "<?xml encoding=\"latin1\"?>\xC2\x80\xC3\xA4 | control at 25"},
        {"<?xml encoding=\"CP1252\"?>\x80\x99\xFF",
         "<?xml encoding=\"CP1252\"?>\xE2\x82\xAC\xE2\x84\xA2\xC3\xBF"},
        {"<?xml encoding=\"ISO-8859-15\"?>\xA4", "<?xml encoding=\"ISO-8859-15\"?>\xE2\x82\xAC"},
        {"<?xml encoding=\"SHIFT-JIS\"?>\x83\x41\x83",
         "<?xml encoding=\"SHIFT-JIS\"?>\xE3\x82\xA2\xEF\xBF\xBD | malformed 0x83 at 31"},
        {"<?xml encoding=\"none\"?>\xE4", "<?xml encoding=\"none\"?>\xC3\xA4"},
        {"\x4C\x6F\xA7\x94\x93\x6E", "<?xml>"},
        {"<\0\0\0\xE4\0\0\0"s, "<\xC3\xA4"},
        {"\0\0\0<\0\0\0\xE4"s, "<\xC3\xA4"},
        {"a\xE4z", "a\xEF\xBF\xBDz | malformed 0xE4 at 1"},
        {"a\xC0\x80", "a\xEF\xBF\xBD\xEF\xBF\xBD | malformed 0xC0 at 1"},
        {"\xED\xA0\x80", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD | malformed 0xED at 0"},
        {"a\xE2\x82", "a\xEF\xBF\xBD\xEF\xBF\xBD | malformed 0xE2 at 1"},
        {"\xFF\xFE<\0\x3D\xD8x\0"s, "<\xEF\xBF\xBDx | malformed 0x3D at 1"},
        {"\xFF\xFE<\0a"s, "<\xEF\xBF\xBD | malformed 0x61 at 1"},
        {"", ""},
    };
    for (const encoded &one : cases)
        EXPECT_EQ(decoded(one.bytes), one.text);
}

} // namespace
