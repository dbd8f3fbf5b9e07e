/// The elements of a document with their texts, whatever its bytes are.

#include <gtest/gtest.h>

#include "check/element_text.h"
#include "check/outline.h"

namespace {

using namespace std::string_literals;

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
        {"<", ""},
        {"<a>\0</a>"s, "a@0 '\\x00'\n"},
        {"text", ""},
        {"", ""},
    };
    for (const outlined_case &one : cases)
        EXPECT_EQ(outlined(one.text, one.text.size()), one.outline) << one.text;
    EXPECT_EQ(outlined("<a><b>x</b></a>", 6), "a@0 open\n.b@3 open\n") << "up to a length";
}

TEST(Outline, QuotesTextsWithoutEndsOfLinesOrHalfCharacters) {
    EXPECT_EQ(in_quotes("a\n\t\r\x01z"), "'a\\n\\t\\r\\x01z'");
    EXPECT_EQ(in_quotes("\xED\xA0\x80"), "'\\xED\\xA0\\x80'") << "a surrogate";
    EXPECT_EQ(in_quotes(std::string(40, 'a')), "'" + std::string(40, 'a') + "'");
    EXPECT_EQ(in_quotes(std::string(41, 'a')), "'" + std::string(40, 'a') + "...'");
    EXPECT_EQ(in_quotes(std::string(39, 'a') + "\xC3\xA4z"), "'" + std::string(39, 'a') + "...'");
}

} // namespace
