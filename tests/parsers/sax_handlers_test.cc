/// What the handlers of the two pull readers keep of the parser's calls, and what they report.

#include "SAX_File_Parser.h"
#include "SAX_Memory_Parser.h"

#include <iostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/sax/AttributeList.hpp>
#include <xercesc/sax/SAXParseException.hpp>

#include "steps/sax_step_handlers.h"
#include "support/capture.h"
#include "xml_platform.h"

namespace {

/// Both handlers, driven without a parser where none is mentioned. Transcoding needs the platform.
template <class Handlers> class SaxHandlers : public testing::Test {
protected:
    xml_platform platform;
    Handlers handlers;

    void text(const std::u16string &piece) { handlers.characters(piece.c_str(), piece.size()); }
};
using handler_types = testing::Types<MemParseHandlers, FileParseHandlers>;
TYPED_TEST_SUITE(SaxHandlers, handler_types, );

struct attribute {
    std::u16string name, type, value;
};

/// Attributes as the parser hands them over.
class attribute_list : public xercesc::AttributeList {
public:
    explicit attribute_list(std::vector<attribute> all) : all_(std::move(all)) {}

    XMLSize_t getLength() const override { return all_.size(); }
    const XMLCh *getName(const XMLSize_t index) const override { return all_[index].name.c_str(); }
    const XMLCh *getType(const XMLSize_t index) const override { return all_[index].type.c_str(); }
    const XMLCh *getValue(const XMLSize_t index) const override { return all_[index].value.c_str(); }
    const XMLCh *getType(const XMLCh *const) const override { return nullptr; }
    const XMLCh *getValue(const XMLCh *const) const override { return nullptr; }
    const XMLCh *getValue(const char *const) const override { return nullptr; }

private:
    std::vector<attribute> all_;
};

template <class Handlers>
void start(Handlers &handlers, const char16_t *name, std::vector<attribute> attributes = {}) {
    attribute_list list(std::move(attributes));
    handlers.startElement(name, list);
}

/// Tag, text and attributes in one line; "~" for a null tag.
template <class Handlers> std::string state(Handlers &handlers) {
    std::string all = handlers.getTag() ? handlers.getTag() : "~";
    if (handlers.getValue())
        all += '[' + std::string(handlers.getValue()) + ']';
    for (const auto *record : handlers.getAttr())
        all += ' ' + std::string(record->name) + ':' + record->type + '=' + record->value;
    return all;
}

/// Elements, attributes, characters, ignorable blanks and errors.
template <class Handlers> std::vector<long> counters(const Handlers &h) {
    return {h.getElementCount(), h.getAttrCount(), h.getCharacterCount(), h.getSpaceCount(),
            h.getErrorCount()};
}
using counts = std::vector<long>;

TYPED_TEST(SaxHandlers, BeginEmpty) {
    EXPECT_EQ(state(this->handlers), "~");
    EXPECT_EQ(counters(this->handlers), (counts{0, 0, 0, 0, 0}));
}

TYPED_TEST(SaxHandlers, CountWhatTheyAreGiven) {
    auto &h = this->handlers;
    start(h, u"A", {{u"a", u"CDATA", u"1"}, {u"b", u"CDATA", u"2"}});
    this->text(u"text");
    h.ignorableWhitespace(u" \n ", 3);
    h.endElement(u"A");
    start(h, u"B", {{u"c", u"CDATA", u"3"}});
    this->text(u" ");
    this->text(u"without a tag"); // counted all the same
    this->text(u"");
    h.ignorableWhitespace(u"\t", 1);
    EXPECT_EQ(counters(h), (counts{2, 3, 18, 4, 0}));
}

TYPED_TEST(SaxHandlers, CountCharactersInUnitsOfTheParser) {
    start(this->handlers, u"A");
    this->text(u"\u00e4\u20ac\U0001f600"); // 9 bytes in UTF-8, 4 units in UTF-16
    EXPECT_EQ(this->handlers.getCharacterCount(), 4u);
}

TYPED_TEST(SaxHandlers, CountTheSameInElementsWithAndWithoutAttributesThatAParserReads) {
    const std::string declarations = "<!DOCTYPE r [<!ELEMENT r (a*)><!ATTLIST r n CDATA #IMPLIED>"
                                     "<!ELEMENT a (#PCDATA)><!ATTLIST a n CDATA #IMPLIED>]>\n";
    const struct {
        const char *elements;
        counts expect;
    } rows[] = {
        {"<r>\n  <a>x y</a>\n\t<a/> </r>\n\n", {3, 0, 3, 6, 0}},
        {"<r n='1'>\n  <a>x y</a>\n\t<a/> </r>\n\n", {3, 1, 3, 6, 0}},
        {"<r n='1'>\n  <a n='2'>x y</a>\n\t<a n='3'/> </r>\n\n", {3, 3, 3, 6, 0}},
        {"<r>\n  <a n='2'>x y</a>\n\t<a n='3'/> </r>\n\n", {3, 2, 3, 6, 0}},
        {"<r/>\n", {1, 0, 0, 0, 0}},
    };
    for (const auto &row : rows) {
        const std::string document = declarations + row.elements;
        const xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte *>(document.data()),
                                                document.size(), "document", false);
        zeb5::sax_step_handlers::create_parser(nullptr, this->handlers)->parse(source);
        EXPECT_EQ(counters(this->handlers), row.expect) << row.elements;
    }
}

TYPED_TEST(SaxHandlers, KeepTheLastStartTagAndItsAttributes) {
    auto &h = this->handlers;
    start(h, u"A", {{u"a", u"CDATA", u"1"}, {u"b", u"NMTOKEN", u""}, {u"c", u"ID", u"x<y"}});
    EXPECT_EQ(state(h), "A a:CDATA=1 b:NMTOKEN= c:ID=x<y");
    start(h, u"longer_than_before", {{u"d", u"CDATA", u"2"}});
    EXPECT_EQ(state(h), "longer_than_before d:CDATA=2");
    start(h, u"B");
    EXPECT_EQ(state(h), "B");
}

TYPED_TEST(SaxHandlers, BeginWithTextsOfNoCharacters) {
    start(this->handlers, u"", {{u"", u"", u""}});
    EXPECT_EQ(state(this->handlers), " :=");
}

TYPED_TEST(SaxHandlers, TellNamesApartByEachCharacter) {
    const std::string longest = "ABCDEFGHIJKL";
    for (size_t length = 1; length <= longest.size(); ++length)
        for (size_t i = 0; i < length; ++i) {
            std::string other = longest.substr(0, length);
            other[i] = 'x';
            for (const std::string &name : {longest.substr(0, length), other}) {
                start(this->handlers, std::u16string(name.begin(), name.end()).c_str());
                EXPECT_EQ(state(this->handlers), name);
            }
        }
}

TYPED_TEST(SaxHandlers, LeaveTheTextAloneAtAStartTag) {
    start(this->handlers, u"A");
    this->text(u"text");
    start(this->handlers, u"B");
    EXPECT_EQ(state(this->handlers), "B[text]");
}

TYPED_TEST(SaxHandlers, KeepTheLastPieceOfText) {
    start(this->handlers, u"A", {{u"a", u"CDATA", u"1"}});
    for (const std::string &piece :
         {std::string("one"), std::string("two, longer"), std::string("3"), std::string(100000, 'x')}) {
        this->text(std::u16string(piece.begin(), piece.end()));
        EXPECT_EQ(state(this->handlers), "A[" + piece + "] a:CDATA=1");
    }
}

TYPED_TEST(SaxHandlers, IgnoreTextWithoutATag) {
    this->text(u"text");
    EXPECT_EQ(state(this->handlers), "~");
}

struct blank_case {
    const char16_t *text;
    const char *state; // after it came in element A
};
const blank_case blank_cases[] = {
    {u" ", "~"},
    {u"\n", "~"},
    {u"\t", "~"},
    {u" \n\t \n", "~"},
    {u"", "~"},
    {u" x", "A[ x]"},
    {u"x ", "A[x ]"},
    {u" x ", "A[ x ]"},
    {u"\r", "A[\r]"},
    {u" \r\n", "A[ \r\n]"},
    {u"\v", "A[\v]"},
    {u"\f", "A[\f]"},
    {u"\u00a0", "A[\xc2\xa0]"},
    {u"\u2003", "A[\xe2\x80\x83]"},
    {u"\u0085", "A[\xc2\x85]"},
};

TYPED_TEST(SaxHandlers, TakeBlanksLineFeedsAndTabsForNoText) {
    for (const auto &c : blank_cases) {
        start(this->handlers, u"A");
        this->text(c.text);
        EXPECT_EQ(state(this->handlers), c.state);
        this->handlers.resetDocument();
    }
}

TYPED_TEST(SaxHandlers, DropTagAndTextWithABlankPieceButNotTheAttributes) {
    start(this->handlers, u"A", {{u"a", u"CDATA", u"1"}});
    this->text(u"text");
    this->text(u" ");
    EXPECT_EQ(state(this->handlers), "~ a:CDATA=1");
    this->text(u"more");
    EXPECT_EQ(state(this->handlers), "~ a:CDATA=1");
}

TYPED_TEST(SaxHandlers, LeaveAllAloneAtIgnorableWhiteSpace) {
    start(this->handlers, u"A", {{u"a", u"CDATA", u"1"}});
    this->handlers.ignorableWhitespace(u"  ", 2);
    EXPECT_EQ(state(this->handlers), "A a:CDATA=1");
}

TYPED_TEST(SaxHandlers, NarrowWhatTheyAreGivenToUtf8) {
    auto &h = this->handlers;
    start(h, u"\u00e4", {{u"\u20ac", u"CDATA", u"\U0001f600x"}});
    this->text(u"a\u00e4\u20ac\U0001f600z");
    EXPECT_EQ(state(h),
              "\xc3\xa4[a\xc3\xa4\xe2\x82\xac\xf0\x9f\x98\x80z] \xe2\x82\xac:CDATA=\xf0\x9f\x98\x80x");
    this->text(u"ASCII again");
    EXPECT_STREQ(h.getValue(), "ASCII again");
    const std::u16string long_text = std::u16string(70000, u'x') + std::u16string(70000, u'\u20ac');
    this->text(long_text);
    std::string expected(70000, 'x');
    for (int i = 0; i < 70000; ++i)
        expected += "\xe2\x82\xac";
    EXPECT_TRUE(h.getValue() == expected); // too long to be printed
}

TYPED_TEST(SaxHandlers, DropAStepOnceItsEndTagOrItsTextWasSeen) {
    auto &h = this->handlers;
    const std::vector<attribute> one = {{u"a", u"CDATA", u"1"}};
    start(h, u"A", one);
    h.reset_end_tag_flag();
    EXPECT_EQ(state(h), "A a:CDATA=1") << "a fresh start tag stays";
    h.endElement(u"A");
    EXPECT_EQ(state(h), "A a:CDATA=1") << "until the next step";
    h.reset_end_tag_flag();
    EXPECT_EQ(state(h), "~");

    start(h, u"B", one);
    h.reset_end_tag_flag();
    EXPECT_EQ(state(h), "B a:CDATA=1") << "the end tag counts once";
    this->text(u"text");
    h.reset_end_tag_flag();
    EXPECT_EQ(state(h), "~");

    start(h, u"C", one);
    this->text(u" ");
    h.reset_end_tag_flag();
    EXPECT_EQ(state(h), "~ a:CDATA=1") << "a blank is neither";
    h.endElement(u"C");
    h.reset_end_tag_flag();
    EXPECT_EQ(state(h), "~");
}

TYPED_TEST(SaxHandlers, IgnoreTheNameOfAnEndTag) {
    start(this->handlers, u"A");
    this->handlers.endElement(u"B");
    EXPECT_EQ(state(this->handlers), "A");
    this->handlers.reset_end_tag_flag();
    EXPECT_EQ(state(this->handlers), "~");
}

xercesc::SAXParseException problem(const char16_t *message, const char16_t *file, XMLFileLoc line,
                                   XMLFileLoc column) {
    return xercesc::SAXParseException(message, u"public", file, line, column);
}

TYPED_TEST(SaxHandlers, ResetAllButTheAttributesWithTheDocument) {
    auto &h = this->handlers;
    start(h, u"A", {{u"a", u"CDATA", u"1"}});
    this->text(u"text");
    h.ignorableWhitespace(u" ", 1);
    capture([&] { h.error(problem(u"m", u"f", 1, 2)); });
    EXPECT_EQ(counters(h), (counts{1, 1, 4, 1, 1}));
    h.resetDocument();
    EXPECT_EQ(counters(h), (counts{0, 0, 0, 0, 0}));
    EXPECT_EQ(state(h), "~ a:CDATA=1");
    h.resetDocument(); // twice does no harm
    EXPECT_EQ(counters(h), (counts{0, 0, 0, 0, 0}));
}

TYPED_TEST(SaxHandlers, DoNotResetAnythingWithTheErrors) {
    auto &h = this->handlers;
    start(h, u"A");
    capture([&] { h.error(problem(u"m", u"f", 1, 2)); });
    h.resetErrors();
    EXPECT_EQ(h.getErrorCount(), 1);
    EXPECT_EQ(state(h), "A");
}

TYPED_TEST(SaxHandlers, ReportEveryProblemAndCountIt) {
    auto &h = this->handlers;
    const captured streams = capture([&] {
        h.warning(problem(u"take care", u"some file", 1, 2));
        h.error(problem(u"wrong", u"/a/b.xml", 30, 400));
        h.fatalError(problem(u"over", u"\u00e4.xml", 18446744073709551615u, 0));
        h.error(problem(u"", u"", 0, 0));
    });
    EXPECT_EQ(streams.err, "\nWarning at (file some file, line 1, char 2): take care\n"
                           "\nError at (file /a/b.xml, line 30, char 400): wrong\n"
                           "\nFatal Error at (file \xc3\xa4.xml, line 18446744073709551615, char 0): over\n"
                           "\nError at (file , line 0, char 0): \n");
    EXPECT_EQ(streams.out, "");
    EXPECT_EQ(h.getErrorCount(), 4);
    EXPECT_EQ(state(h), "~");
}

TYPED_TEST(SaxHandlers, FlushEveryReport) {
    const captured streams = capture([&] {
        this->handlers.warning(problem(u"m", u"f", 1, 2));
        // what is written past the stream must come after it
        EXPECT_EQ(write(STDERR_FILENO, "after", 5), 5);
    });
    EXPECT_EQ(streams.err, "\nWarning at (file f, line 1, char 2): m\nafter");
}

TYPED_TEST(SaxHandlers, LeaveTheStreamFailedAfterAReportWithoutFileOrMessage) {
    const struct {
        const char16_t *message, *file;
        const char *expect;
    } cases[] = {
        {u"m", nullptr, "\nError at (file "},
        {nullptr, u"f", "\nError at (file f, line 1, char 2): "},
        {nullptr, nullptr, "\nError at (file "},
    };
    for (const auto &c : cases) {
        bool failed = false;
        const captured streams = capture([&] {
            this->handlers.error(problem(c.message, c.file, 1, 2));
            failed = std::cerr.fail();
            std::cerr.clear();
        });
        EXPECT_EQ(streams.err, c.expect);
        EXPECT_TRUE(failed) << c.expect;
    }
    EXPECT_EQ(this->handlers.getErrorCount(), 3);
}

TYPED_TEST(SaxHandlers, HandOutTagAndTextTogether) {
    auto &h = this->handlers;
    char never_set = '?', *tag = &never_set, *value = &never_set;
    h.getTagValue(&tag, &value);
    EXPECT_EQ(tag, nullptr);
    EXPECT_EQ(value, nullptr);
    start(h, u"A");
    this->text(u"text");
    h.getTagValue(&tag, &value);
    EXPECT_EQ(tag, h.getTag());
    EXPECT_EQ(value, h.getValue());
    EXPECT_STREQ(tag, "A");
    EXPECT_STREQ(value, "text");
}

TYPED_TEST(SaxHandlers, DropTagAndTextOneByOneOrTogether) {
    auto &h = this->handlers;
    const auto begin = [&] {
        h.resetDocument();
        start(h, u"A");
        this->text(u"text");
        EXPECT_EQ(state(h), "A[text]");
    };
    begin();
    h.resetTag();
    EXPECT_EQ(state(h), "~[text]");
    begin();
    h.resetValue();
    EXPECT_EQ(state(h), "A");
    begin();
    h.resetTagValue();
    EXPECT_EQ(state(h), "~");
    h.resetTagValue(); // twice does no harm
    EXPECT_EQ(state(h), "~");
    start(h, u"B");
    this->text(u"again");
    EXPECT_EQ(state(h), "B[again]");
}

TYPED_TEST(SaxHandlers, HandOutTheirOwnAttributeArray) {
    auto &h = this->handlers;
    start(h, u"A", {{u"a", u"CDATA", u"1"}});
    auto &attributes = h.getAttr();
    EXPECT_EQ(&attributes, &h.getAttr());
    start(h, u"B", {{u"b", u"CDATA", u"2"}, {u"c", u"CDATA", u"3"}});
    EXPECT_EQ(attributes.size(), 2u);
}

TYPED_TEST(SaxHandlers, AreHandlersOfTheirBase) {
    xercesc::HandlerBase *const base = new TypeParam; // released through its base
    attribute_list attributes({{u"a", u"CDATA", u"1"}});
    base->startElement(u"A", attributes);
    base->characters(u"text", 4);
    delete base;
}

} // namespace
