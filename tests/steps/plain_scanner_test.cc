/// The tokens of plain documents, and what is noted of their texts.

#include "steps/plain_scanner.h"

#include <string>

#include <gtest/gtest.h>

namespace {

using zeb5::plain_token;

std::string as_text(const zeb5::raw_text &text) {
    return std::string(text.bytes()) + (text.has_references ? " &" : "") + (text.has_line_ends ? " /" : "") +
           (text.has_wide ? " +" : "");
}

/// The token in square brackets.
std::string as_text(plain_token token, const zeb5::plain_scanner &scanner) {
    std::string seen = "[";
    switch (token) {
    case plain_token::START:
        seen += '<' + std::string(scanner.element().text());
        for (const zeb5::raw_attribute &attribute : scanner.attributes())
            seen += '|' + std::string(attribute.name) + '=' + as_text(attribute.value);
        return seen + (scanner.is_empty() ? "/]" : "]");
    case plain_token::END:
        return seen + "</" + std::string(scanner.element().text()) + ']';
    case plain_token::TEXT:
        return seen + as_text(scanner.text()) + ']';
    case plain_token::CDATA:
        return seen + '!' + as_text(scanner.text()) + ']';
    case plain_token::ASIDE:
        return "[aside]";
    case plain_token::FINISHED:
        return "[end]";
    default:
        return "[not plain]";
    }
}

std::string tokens_of(const std::string &document) {
    zeb5::memory_window window(document.c_str());
    zeb5::plain_scanner scanner(window);
    if (!scanner.start())
        return "not started";
    std::string seen;
    plain_token token;
    do
        seen += as_text(token = scanner.next(), scanner);
    while (token != plain_token::FINISHED && token != plain_token::NOT_PLAIN);
    return seen;
}

TEST(PlainScanner, HandsOutTheTokens) {
    EXPECT_EQ(tokens_of("<?xml version='1.0'?> <?p?><r>t<a/><!-- c --><![CDATA[d]]></r> <!-- e -->"),
              "[aside][<r][t][<a/][aside][!d][</r][aside][end]");
    EXPECT_EQ(tokens_of("<r a='1' b = \"2\"><c d='3'/>"), "[<r|a=1|b=2][<c|d=3/][not plain]");
}

TEST(PlainScanner, NotesWhatInATextIsReadInAnotherWay) {
    EXPECT_EQ(tokens_of("<r>x\ny\tz</r>"), "[<r][x\ny\tz][</r][end]");
    EXPECT_EQ(tokens_of("<r>&amp;</r>"), "[<r][&amp; &][</r][end]");
    EXPECT_EQ(tokens_of("<r>\r</r>"), "[<r][\r /][</r][end]");
    EXPECT_EQ(tokens_of("<r>\xC3\xA4</r>"), "[<r][\xC3\xA4 +][</r][end]");
    EXPECT_EQ(tokens_of("<r>\n\r x</r>"), "[<r][\n\r x /][</r][end]");
    EXPECT_EQ(tokens_of("<r>\n\xC3\xA4 x</r>"), "[<r][\n\xC3\xA4 x +][</r][end]");
    EXPECT_EQ(tokens_of("<r>&lt;\r\xC3\xA4 ]] x</r>"), "[<r][&lt;\r\xC3\xA4 ]] x & / +][</r][end]");
}

TEST(PlainScanner, NotesWhatInACdataSectionIsReadInAnotherWay) {
    EXPECT_EQ(tokens_of("<r><![CDATA[&<\n]]></r>"), "[<r][!&<\n][</r][end]");
    EXPECT_EQ(tokens_of("<r><![CDATA[x\ry]]></r>"), "[<r][!x\ry /][</r][end]");
    EXPECT_EQ(tokens_of("<r><![CDATA[x\xC3\xA4y]]></r>"), "[<r][!x\xC3\xA4y +][</r][end]");
}

TEST(PlainScanner, NotesWhatInAnAttributeIsReadInAnotherWay) {
    EXPECT_EQ(tokens_of("<r a='x y>' b='&lt;' c='\t' d='\n' e='\xC3\xA4' f=''/>"),
              "[<r|a=x y>|b=&lt; &|c=\t /|d=\n /|e=\xC3\xA4 +|f=/][end]");
    EXPECT_EQ(tokens_of("<r a='\xC3\xA4\t&lt; x'/>"), "[<r|a=\xC3\xA4\t&lt; x & / +/][end]");
    EXPECT_EQ(tokens_of("<r a='\t\xC3\xA4'/>"), "[<r|a=\t\xC3\xA4 / +/][end]");
}

TEST(PlainScanner, StopsWhereADocumentIsNotPlain) {
    EXPECT_EQ(tokens_of("<?xml version='1.1'?><r/>"), "not started");
    EXPECT_EQ(tokens_of(""), "[not plain]");
    EXPECT_EQ(tokens_of("<!DOCTYPE r><r/>"), "[not plain]");
    EXPECT_EQ(tokens_of("<r>x<a b='1' b='2'/></r>"), "[<r][x][not plain]");
    EXPECT_EQ(tokens_of("<r>x</r><a/>"), "[<r][x][</r][not plain]");
}

TEST(PlainScanner, StaysWhereItStopped) {
    const std::string document = "<r>x<!x></r>";
    zeb5::memory_window window(document.c_str());
    zeb5::plain_scanner scanner(window);
    ASSERT_TRUE(scanner.start());
    scanner.next();
    scanner.next();
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(as_text(scanner.next(), scanner), "[not plain]");
}

} // namespace
