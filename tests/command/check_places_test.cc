/// The characters of a document, their places and its outline, whatever its bytes are.

#include <gtest/gtest.h>

#include "decoded_text.h"
#include "element_text.h"
#include "outline.h"
#include "text_places.h"

namespace {

using namespace std::string_literals;

std::string decoded(const std::string &bytes) {
    const decoded_text result = decode(bytes);
    std::string text = result.text;
    if (result.malformed != decoded_text::none)
        text += " | malformed " + result.malformed_bytes + " at " + std::to_string(result.malformed);
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

TEST(TextPlaces, CountLinesAsXmlDoesAndCharactersAsEditorsDo) {
    const std::string text = "a\xC3\xA4z\r\nb\rc\n\n\xE2\x82\xAC.";
    struct placed {
        std::size_t offset, line, column;
    };
    const placed cases[] = {{0, 1, 1}, {1, 1, 2},  {3, 1, 3},  {6, 2, 1},  {7, 2, 2},
                            {8, 3, 1}, {10, 4, 1}, {11, 5, 1}, {14, 5, 2}, {15, 5, 3}};
    text_places places(text);
    for (const placed &one : cases) {
        const text_place place = places.place_of(one.offset);
        EXPECT_EQ(std::to_string(place.line) + ":" + std::to_string(place.column),
                  std::to_string(one.line) + ":" + std::to_string(one.column))
            << one.offset;
        EXPECT_EQ(offset_of(text, place), one.offset);
    }
    EXPECT_EQ(places.place_of(0).line, 1U) << "places may be asked for in any order";
    EXPECT_EQ(offset_of(text, {1, 99}), 4U) << "the end of the line";
    EXPECT_EQ(offset_of(text, {99, 1}), text.size());
}

/// Every element as "NAME(attribute=value)@offset" with its text; a level more for each parent.
std::string outlined(const std::string &text, std::size_t length) {
    const outline found = outline_of(text, length);
    std::string result;
    for (const outline_element &element : found.elements) {
        for (std::size_t up = element.parent; up != outline_element::none; up = found.elements[up].parent)
            result += ".";
        result += std::string(element.name);
        for (std::size_t i = 0; i < element.attributes; ++i) {
            const outline_attribute &attribute = found.attributes[element.first_attribute + i];
            result.append("(").append(attribute.name).append("=").append(attribute.value).append(")");
        }
        result += "@" + std::to_string(element.at) + (element.is_closed ? "" : " open");
        const element_text own = text_of(found, element);
        if (!own.is_blank())
            result += " " + in_quotes(own.whole) + (own.is_split() ? " split by " + own.causes : "");
        if (element.later_text != outline_element::none)
            result += " later " + std::to_string(element.later_text);
        result += "\n";
    }
    return result + (found.doctype == outline_element::none ? "" : "doctype\n");
}

TEST(Outline, HasElementsWithTheirTexts) {
    struct outlined_case {
        std::string text, outline;
    };
    const outlined_case cases[] = {
        {"<a><b>x</b> y <c/></a>", "a@0 later 12\n.b@3 'x'\n.c@14\n"},
        {"<a b='>' c=\"&lt;\"/>", "a(b=>)(c=&lt;)@0\n"},
        {"<a>1<!-- <b> -->2<?p <b> ?>3<![CDATA[<b>]]></a>",
         "a@0 '123<b>' split by a comment or an instruction, a CDATA section\n"},
        {"<a>&amp;&#65;&#x20AC;&e;</a>", "a@0 '&A\xE2\x82\xAC&e;' split by a reference\n"},
        {"<!DOCTYPE a [<!ENTITY e \"]>\"><!-- ' > -->]><a>\r\nb\r</a>", "a@43 '\\nb\\n'\ndoctype\n"},
        {"<a><b>x", "a@0 open\n.b@3 open 'x'\n"},
        {"<a b='", "a(b=)@0 open\n"},
        {"<a <b/>", "a(<b=)@0\n"},
        {"</a></b><c/>", "c@8\n"},
        {"<a><!-- ", "a@0 open\n"},
        {"<a>&amp", "a@0 open '&amp'\n"},
        {"<", "@0 open\n"},
        {"<a>\0</a>"s, "a@0 '\\x00'\n"},
        {"text", ""},
        {"", ""},
    };
    for (const outlined_case &one : cases)
        EXPECT_EQ(outlined(one.text, one.text.size()), one.outline) << one.text;
    EXPECT_EQ(outlined("<a><b>x</b></a>", 6), "a@0 open\n.b@3 open\n") << "up to a length";
}

TEST(ElementText, IsQuotedWithoutEndsOfLinesOrHalfCharacters) {
    EXPECT_EQ(in_quotes("a\n\t\r\x01z"), "'a\\n\\t\\r\\x01z'");
    EXPECT_EQ(in_quotes(std::string(40, 'a')), "'" + std::string(40, 'a') + "'");
    EXPECT_EQ(in_quotes(std::string(41, 'a')), "'" + std::string(40, 'a') + "...'");
    EXPECT_EQ(in_quotes(std::string(39, 'a') + "\xC3\xA4z"), "'" + std::string(39, 'a') + "...'");
}

} // namespace
