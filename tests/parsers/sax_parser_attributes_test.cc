/// Attributes that the two pull readers are asked for: which are found, and how long.

#include "SAX_File_Parser.h"
#include "SAX_Memory_Parser.h"

#include <string>

#include <gtest/gtest.h>

#include "support/capture.h"
#include "support/sax_sources.h"

namespace {

template <class Source> class SaxParserAttributes : public testing::Test {};
using sources = testing::Types<memory_source, file_source>;
TYPED_TEST_SUITE(SaxParserAttributes, sources, );

/// The attribute's value, or "-1 and null" and the like when it is not found.
template <class Parser> std::string attribute(Parser &parser, std::string name) {
    char never_set = '?', *value = &never_set;
    const int result = parser.get_attr(name.data(), &value);
    if (result == 0 && value)
        return value;
    return std::to_string(result) + (value ? " and a value" : " and null");
}

const char none[] = "-1 and null";

struct attribute_case {
    const char *document; // its root element has the attributes
    const char *name;
    const char *value;
};
const attribute_case attribute_cases[] = {
    {"<r a=\"1\"/>", "a", "1"},
    {"<r a=\"1\" b='2' c=\"3\"/>", "a", "1"},
    {"<r a=\"1\" b='2' c=\"3\"/>", "b", "2"},
    {"<r a=\"1\" b='2' c=\"3\"/>", "c", "3"},
    {"<r a=\"\"/>", "a", ""},
    {"<r a=\" \"/>", "a", " "},
    {"<r a=\"1\"/>", "b", none},
    {"<r a=\"1\"/>", "A", none}, // upper and lower case differ
    {"<r abc=\"1\"/>", "ab", none},
    {"<r ab=\"1\"/>", "abc", none},
    {"<r a=\"1\"/>", "", none},
    {"<r/>", "a", none},
    {"<r x:a=\"1\" xmlns:x=\"u\"/>", "x:a", "1"}, // prefixes are part of the name
    {"<r x:a=\"1\" xmlns:x=\"u\"/>", "xmlns:x", "u"},
    {"<r x:a=\"1\" xmlns:x=\"u\"/>", "a", none},
    {"<r a=\"&lt;&amp;&quot;&#65;&#10;\"/>", "a", "<&\"A\n"},
    {"<r a=\"x\n\ty\"/>", "a", "x  y"}, // white space is made blanks
    {"<r a=\"\xc3\xa4\xe2\x82\xac\xf0\x9f\x98\x80\"/>", "a", "\xc3\xa4\xe2\x82\xac\xf0\x9f\x98\x80"},
    {"<r \xc3\xa4=\"1\"/>", "\xc3\xa4", "1"},
    {"<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><r a=\"\xe4\"/>", "a", "\xc3\xa4"},
    // Declared in the document: normalised by their type, and defaults supplied
    {"<!DOCTYPE r [<!ELEMENT r ANY><!ATTLIST r t NMTOKENS #IMPLIED>]><r t=\"  x   y \"/>", "t", "x y"},
    {"<!DOCTYPE r [<!ELEMENT r ANY><!ATTLIST r d CDATA \"def\">]><r/>", "d", "def"},
    {"<!DOCTYPE r [<!ELEMENT r ANY><!ATTLIST r d CDATA \"def\">]><r d=\"1\"/>", "d", "1"},
    {"<!DOCTYPE r [<!ELEMENT r ANY><!ATTLIST r d CDATA #IMPLIED>]><r/>", "d", none},
    {"<!DOCTYPE r [<!ELEMENT r ANY><!ATTLIST r d CDATA #IMPLIED><!ENTITY e \"ENT\">]><r d=\"[&e;]\"/>", "d",
     "[ENT]"},
};

TYPED_TEST(SaxParserAttributes, AreFoundByTheirWholeName) {
    for (const auto &c : attribute_cases) {
        TypeParam source(c.document);
        ASSERT_EQ(source.start(), 0) << c.document;
        ASSERT_EQ(step(source.parser()).substr(0, 1), "r") << c.document;
        EXPECT_EQ(attribute(source.parser(), c.name), c.value) << c.document << ' ' << c.name;
    }
}

TYPED_TEST(SaxParserAttributes, LastAsLongAsTheirElementIsCurrent) {
    TypeParam source(
        "<r n=\"1\"><!-- c -->t<a n=\"2\"/><b n=\"3\"></b> <c/><d n=\"4\"> </d><e n=\"5\"><f/></e></r>");
    const struct {
        const char *step, *value;
    } expected[] = {
        {"r", "1"},  {"r", "1"},  {"r[t]", "1"}, // start tag, comment, text
        {"a", "2"},                              //
        {"b", "3"},  {"b", "3"},                 // start tag, end tag
        {"~", none},                             // blank
        {"c", none},                             //
        {"d", "4"},  {"~", "4"},  {"~", "4"},    // start tag, blank, end tag: without a tag, yet there
        {"e", "5"},  {"f", none}, {"~", none},   //
        {"~", none}, {"~", none}, {"-1", none},
    };
    ASSERT_EQ(source.start(), 0);
    EXPECT_EQ(attribute(source.parser(), "n"), none) << "before any start tag";
    for (const auto &e : expected) {
        EXPECT_EQ(step(source.parser()), e.step);
        EXPECT_EQ(attribute(source.parser(), "n"), e.value) << e.step;
    }
}

TYPED_TEST(SaxParserAttributes, AreNotFoundBeforeTheStart) {
    TypeParam source("<r n=\"1\"/>");
    EXPECT_EQ(attribute(source.parser(), "n"), none);
}

TYPED_TEST(SaxParserAttributes, AreNotFoundWithoutAName) {
    TypeParam source("<r n=\"1\"/>");
    ASSERT_EQ(source.start(), 0);
    ASSERT_EQ(step(source.parser()), "r");
    char never_set = '?', *value = &never_set;
    EXPECT_EQ(source.parser().get_attr(nullptr, &value), -1);
    EXPECT_EQ(value, nullptr);
}

TYPED_TEST(SaxParserAttributes, AreNotFoundAfterAnyReport) {
    for (const char *document : {"<r n=\"1\">&nosuch;</r>", "<!DOCTYPE r [<!ELEMENT r ANY>]><r n=\"1\">t</r>",
                                 "<?xml version=\"1.0\" encoding=\"UTF-16\"?><r n=\"1\"/>"}) {
        TypeParam source(document);
        capture([&] {
            EXPECT_EQ(source.start(), 0);
            steps(source.parser());
        });
        EXPECT_EQ(source.parser().get_error_counter(), 1) << document;
        EXPECT_EQ(attribute(source.parser(), "n"), none) << document;
    }
}

TYPED_TEST(SaxParserAttributes, MayBeMany) {
    std::string document = "<r";
    for (int i = 0; i < 200; ++i)
        document += " a" + std::to_string(i) + "=\"v" + std::to_string(i) + "\"";
    TypeParam source(document + "/>");
    ASSERT_EQ(source.start(), 0);
    ASSERT_EQ(step(source.parser()), "r");
    for (int i = 0; i < 200; ++i)
        EXPECT_EQ(attribute(source.parser(), "a" + std::to_string(i)), "v" + std::to_string(i));
}

} // namespace
