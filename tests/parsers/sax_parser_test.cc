/// Steps, counts and reports of the two pull readers. What holds for both is tested with both.

#include "SAX_File_Parser.h"
#include "SAX_Memory_Parser.h"

#include <cstring>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "support/capture.h"
#include "support/sax_sources.h"

namespace {

template <class Source> class SaxParser : public testing::Test {};
using sources = testing::Types<memory_source, file_source>;
TYPED_TEST_SUITE(SaxParser, sources, );

struct step_case {
    const char *document;
    const char *steps; // as steps() writes them
};
const step_case step_cases[] = {
    // Start tag, text and end tag are a step each, and so is what follows the root, were it nothing
    {"<A>t</A>", "A A[t] ~ ~ -1"},
    {"<A></A>", "A A ~ -1"},
    {"<A/>", "A ~ -1"},
    {"<A a=\"1\" />", "A ~ -1"},
    {"<A><B/></A>", "A B ~ ~ -1"},
    {"<A><B></B></A>", "A B B ~ ~ -1"},
    {"<A><B>t</B></A>", "A B B[t] ~ ~ ~ -1"},
    {"<A><B>t</B><C>u</C></A>", "A B B[t] ~ C C[u] ~ ~ ~ -1"},
    {"<A><B/><C/></A>", "A B C ~ ~ -1"},
    {"<a:b xmlns:a=\"x\"><a:c/></a:b>", "a:b a:c ~ ~ -1"},
    // White space between elements clears the tag that was pending
    {"<A> <B/></A>", "A ~ B ~ ~ -1"},
    {"<A>\n\t<B>t</B>\n</A>\n", "A ~ B B[t] ~ ~ ~ ~ -1"},
    {"<A>\n\t </A>", "A ~ ~ ~ -1"},
    {"<A>\r\n\r</A>", "A ~ ~ ~ -1"},
    {"<A>&#32;&#10;&#9;</A>", "A ~ ~ ~ -1"},
    // Text after the end of a child is never the parent's
    {"<A><B/>text</A>", "A B ~ ~ ~ -1"},
    {"<A>x<B>y</B>z</A>", "A A[x] B B[y] ~ ~ ~ ~ -1"},
    // Text is kept unless all of it is blanks, line feeds and tabs
    {"<A>&#13;</A>", "A A[\r] ~ ~ -1"},
    {"<A>\xc2\xa0</A>", "A A[\xc2\xa0] ~ ~ -1"},
    {"<A> \n\tx\t\n </A>", "A A[ \n\tx\t\n ] ~ ~ -1"},
    {"<A>a\rb\r\nc&#13;d</A>", "A A[\rd] ~ ~ -1"},
    {"<A>a\rb\r\nc</A>", "A A[a\nb\nc] ~ ~ -1"},
    // Text comes in pieces, the last of a step is its value; a blank piece drops the tag
    {"<r>a&amp;b&lt;c&#65;d</r>", "r r[Ad] ~ ~ -1"},
    {"<r>&amp;</r>", "r r[&] ~ ~ -1"},
    {"<r>a&amp; </r>", "r r[& ] ~ ~ -1"},
    {"<r> &amp;y</r>", "r ~ ~ ~ -1"},
    {"<r>a&#32;</r>", "r ~ ~ ~ -1"},
    {"<!DOCTYPE r [<!ELEMENT r ANY><!ENTITY e \"ENT\">]><r>one &e; two</r>", "r r[ENT] ~ ~ ~ -1"},
    {"<!DOCTYPE r [<!ELEMENT r ANY><!ENTITY e \"&#60;a/>\"><!ELEMENT a EMPTY>]><r>x&e;y</r>",
     "r r[x] a ~ ~ ~ -1"},
    {"<r>ab<![CDATA[cd]]>ef</r>", "r r[ab] ~ ~ ~ ~ -1"},
    {"<r><![CDATA[<&>]]></r>", "r r[<&>] ~ ~ -1"},
    {"<r><![CDATA[]]>x</r>", "r ~ ~ ~ ~ -1"},
    {"<r><![CDATA[ ]]></r>", "r ~ ~ ~ -1"},
    // Comments and processing instructions deliver what is left
    {"<r>ab<!-- c -->cd<?pi x?>ef</r>", "r r[ab] ~ ~ ~ ~ ~ ~ -1"},
    {"<r><!-- c -->x</r>", "r r r[x] ~ ~ -1"},
    {"<r><?pi c?><!-- c -->x</r>", "r r r r[x] ~ ~ -1"},
    {"<r><a/><!-- c --></r>", "r a ~ ~ ~ -1"},
    {"<?xml version=\"1.0\"?>\n<!-- c --><?pi x?>\n<r/>\n<!-- c --><?pi x?>\n", "r ~ -1"},
    // Declarations inside the document work
    {"<!DOCTYPE r><r>x</r>", "r r[x] ~ ~ -1"},
    {"<!DOCTYPE r [<!ELEMENT r (a)><!ELEMENT a (#PCDATA)>]><r> <a>x</a></r>", "r r a a[x] ~ ~ ~ -1"},
    // Text is handed out as UTF-8
    {"<A>\xc3\xa4\xe2\x82\xac\xf0\x9f\x98\x80</A>", "A A[\xc3\xa4\xe2\x82\xac\xf0\x9f\x98\x80] ~ ~ -1"},
    {"<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><A\xe4>\xe4</A\xe4>",
     "A\xc3\xa4 A\xc3\xa4[\xc3\xa4] ~ ~ -1"},
    {"\xef\xbb\xbf<A>t</A>", "A A[t] ~ ~ -1"}, // a byte order mark
    {"<A>t</A>\xc3", "A A[t] ~ ~ -1"},         // a character cut off at the very end goes unnoticed
};

TYPED_TEST(SaxParser, DeliversOneScannerTokenPerStep) {
    for (const auto &c : step_cases) {
        TypeParam source(c.document);
        const outcome seen = read(source);
        EXPECT_EQ(seen.started, 0) << c.document;
        EXPECT_EQ(seen.steps_seen, c.steps) << c.document;
        EXPECT_EQ(seen.count, 0) << c.document;
        EXPECT_EQ(seen.streams.err, "") << c.document;
        EXPECT_EQ(seen.streams.out, "") << c.document;
    }
}

struct report_case {
    const char *document;
    const char *steps; // up to the first report
    const char *message;
};
const char encoding_warning[] =
    "\nWarning at (file <FILE>, line 1, char 40): encoding 'UTF-16' from XML declaration or "
    "manually set contradicts the auto-sensed encoding; ignoring\n";
const report_case report_cases[] = {
    // A warning counts like an error; this one comes with the start
    {"<?xml version=\"1.0\" encoding=\"UTF-16\"?><r>x</r>", "1", encoding_warning},
    // Errors: any internal subset turns validation on
    {"<!DOCTYPE r [<!ELEMENT r ANY>]><r>x<b/></r>", "r r[x] 1",
     "\nError at (file <FILE>, line 1, char 38): no declaration found for element 'b'\n"},
    {"<!DOCTYPE r [<!ELEMENT r EMPTY>]>\n<r>x</r>", "r 1",
     "\nError at (file <FILE>, line 2, char 5): no character data is allowed by content model\n"},
    {"<!DOCTYPE r [<!ELEMENT r ANY>]><r a=\"1\" b=\"2\"/>", "2",
     "\nError at (file <FILE>, line 1, char 37): attribute 'a' is not declared for element 'r'\n"
     "\nError at (file <FILE>, line 1, char 43): attribute 'b' is not declared for element 'r'\n"},
    // Fatal errors
    {"<r>\n  <a>x</b>\n</r>", "r ~ a a[x] 1",
     "\nFatal Error at (file <FILE>, line 2, char 9): expected end of tag 'a'\n"},
    {"<r>&nosuch;</r>", "r 1",
     "\nFatal Error at (file <FILE>, line 1, char 12): entity 'nosuch' not found\n"},
    {"<r>\x01</r>", "r 1", "\nFatal Error at (file <FILE>, line 1, char 5): invalid character 0x1\n"},
    {"<r a=\"1\" a=\"2\"/>", "1",
     "\nFatal Error at (file <FILE>, line 1, char 12): attribute 'a' is already specified for element 'r'\n"},
    {"<r>x", "r r[x] 1",
     "\nFatal Error at (file <FILE>, line 1, char 5): input ended before all started tags were ended; last "
     "tag "
     "started is 'r'\n"},
    {"<r>x\xc3", "r r[x] 1",
     "\nFatal Error at (file <FILE>, line 1, char 5): input ended before all started tags were ended; last "
     "tag "
     "started is 'r'\n"},
    // Junk after the root is reported in the step of the last end tag
    {"<r></r>junk", "r 1",
     "\nFatal Error at (file <FILE>, line 1, char 8): comment or processing instruction expected\n"},
    {"<r/>junk", "1",
     "\nFatal Error at (file <FILE>, line 1, char 5): comment or processing instruction expected\n"},
    {"<r/><s/>", "1",
     "\nFatal Error at (file <FILE>, line 1, char 5): comment or processing instruction expected\n"},
};

TYPED_TEST(SaxParser, ReportsProblemsOnStandardErrorAndReturnsTheirNumber) {
    for (const auto &c : report_cases) {
        TypeParam source(c.document);
        const outcome seen = read(source);
        EXPECT_EQ(seen.started, 0) << c.document;
        EXPECT_EQ(seen.steps_seen, c.steps) << c.document;
        EXPECT_EQ(seen.streams.err, with_file(c.message, source.system_id())) << c.document;
        EXPECT_EQ(seen.streams.out, "") << c.document;
        EXPECT_EQ(std::to_string(seen.count), seen.steps_seen.substr(seen.steps_seen.rfind(' ') + 1))
            << c.document;
    }
}

TYPED_TEST(SaxParser, ReturnsTheCountForGoodAfterAReport) {
    for (const char *document : {"<r><a>x</b></r>", "<?xml version=\"1.0\" encoding=\"UTF-16\"?><r>x</r>"}) {
        TypeParam source(document);
        std::string first, later;
        capture([&] {
            EXPECT_EQ(source.start(), 0);
            first = steps(source.parser());
            for (int i = 0; i < 10; ++i) // past the end of the document, too
                later += step(source.parser());
        });
        EXPECT_EQ(first.back(), '1') << document;
        EXPECT_EQ(later, "1111111111") << document;
    }
}

TYPED_TEST(SaxParser, GoesOnAfterAnErrorThatIsNotFatalAndCountsWhatFollows) {
    TypeParam source("<!DOCTYPE r [<!ELEMENT r ANY>]><r><b/><c/></r>");
    std::string seen;
    const captured streams = capture([&] {
        EXPECT_EQ(source.start(), 0);
        for (int i = 0; i < 8; ++i)
            seen += step(source.parser()) + ' ';
    });
    EXPECT_EQ(seen, "r 1 2 2 2 2 2 2 ");
    EXPECT_EQ(streams.err,
              with_file("\nError at (file <FILE>, line 1, char 37): no declaration found for element 'b'\n"
                        "\nError at (file <FILE>, line 1, char 41): no declaration found for element 'c'\n",
                        source.system_id()));
}

TYPED_TEST(SaxParser, ReturnsMinusOneForGoodAfterTheEnd) {
    TypeParam source("<A>t</A>");
    ASSERT_EQ(source.start(), 0);
    EXPECT_EQ(steps(source.parser()), "A A[t] ~ ~ -1");
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(step(source.parser()), "-1");
}

TYPED_TEST(SaxParser, HandsOutOnlyWhatIsAskedFor) {
    TypeParam source("<A>t</A>");
    ASSERT_EQ(source.start(), 0);
    char *tag = nullptr, *value = nullptr;
    EXPECT_EQ(source.parser().parse(&tag, nullptr), 0);
    EXPECT_STREQ(tag, "A");
    EXPECT_EQ(source.parser().parse(nullptr, &value), 0);
    EXPECT_STREQ(value, "t");
    EXPECT_EQ(source.parser().parse(nullptr, nullptr), 0);
    EXPECT_EQ(source.parser().parse(nullptr, nullptr), 0);
    EXPECT_EQ(source.parser().parse(nullptr, nullptr), -1);
}

TYPED_TEST(SaxParser, CutsTextBeyondAMillionCharactersIntoPieces) {
    const struct {
        size_t length, last_piece;
    } cases[] = {{100'000, 100'000}, {1'048'576, 1'048'576}, {1'048'577, 3}, {3'000'000, 902'850}};
    for (const auto &c : cases) {
        std::string text(c.length, 'x');
        text.back() = 'y';
        TypeParam source("<A>" + text + "</A>");
        ASSERT_EQ(source.start(), 0);
        EXPECT_EQ(step(source.parser()), "A");
        char *value = nullptr;
        ASSERT_EQ(source.parser().parse(nullptr, &value), 0);
        ASSERT_NE(value, nullptr);
        EXPECT_EQ(strlen(value), c.last_piece) << c.length;
        EXPECT_TRUE(text.ends_with(value)) << c.length; // too long to be printed
        EXPECT_EQ(steps(source.parser()), "~ ~ -1");
    }
}

struct start_failure {
    const char *document;
    const char *message;
    int count;
};
const start_failure start_failures[] = {
    {"", "\nFatal Error at (file <FILE>, line 1, char 1): invalid document structure\nscanFirst() failed\n",
     1},
    {" \n ",
     "\nFatal Error at (file <FILE>, line 2, char 2): invalid document structure\nscanFirst() failed\n", 1},
    {"junk<r/>",
     "\nFatal Error at (file <FILE>, line 1, char 1): invalid document structure\nscanFirst() failed\n", 1},
    {" <?xml version=\"1.0\"?><r/>",
     "\nFatal Error at (file <FILE>, line 1, char 8): XML or TEXT declaration must start at line 1, column "
     "1\n"
     "scanFirst() failed\n",
     1},
    {"<?xml version=\"1.0\" encoding=\"nosuch\"?><r/>",
     "\nFatal Error at (file <FILE>, line 1, char 40): unable to create converter for 'NOSUCH' encoding\n"
     "scanFirst() failed\n",
     1},
    // Thrown rather than reported; files get the words of memory streams
    {"<?xml version=\"1.0\" encoding=\"x\x80\"?><r/>",
     "\nError during parsing memory stream:\nException message is:  \n"
     "unable to decode first line in entity '<FILE>'\n",
     0},
};

TYPED_TEST(SaxParser, DoesNotStartOnWhatHasNoRoot) {
    for (const auto &c : start_failures) {
        TypeParam source(c.document);
        int started = -1;
        const captured streams = capture([&] { started = source.start(); });
        EXPECT_TRUE(source.parser().init_ok());
        EXPECT_EQ(started, 1) << c.document;
        EXPECT_EQ(streams.err, with_file(c.message, source.system_id())) << c.document;
        EXPECT_EQ(streams.out, "") << c.document;
        EXPECT_EQ(source.parser().get_error_counter(), c.count) << c.document;
    }
}

const std::string whole_document =
    "<?xml version=\"1.0\" encoding=\"ISO-8859-1\" ?>\n"
    "<!DOCTYPE r [<!ELEMENT r ANY><!ELEMENT a ANY><!ATTLIST a n CDATA #IMPLIED>"
    "<!ENTITY e \"ENT\">]>\n"
    "<r>\n\t<a n=\"1 &lt; &e;\">t &amp; &#65; &e;</a>\n\t<a/><a></a>\n"
    "<!-- c --><?pi x?><a><![CDATA[c]]>\xe4</a>\n</r>";

TYPED_TEST(SaxParser, ReadsTheWholeOfTheDocumentThatTheNextTestCuts) {
    TypeParam source(whole_document);
    const captured streams = capture([&] {
        EXPECT_EQ(source.start(), 0);
        EXPECT_EQ(steps(source.parser()), "r ~ a a[ENT] ~ ~ a a a ~ ~ ~ a a[c] ~ ~ ~ ~ ~ -1");
    });
    EXPECT_EQ(streams.err, "");
}

TYPED_TEST(SaxParser, EndsWithAnErrorOnEveryPrefixThatStopsInsideTheRoot) {
    const size_t root = whole_document.find("<r>");
    for (size_t length = root + 1; length < whole_document.size(); ++length) {
        TypeParam source(whole_document.substr(0, length));
        const outcome seen = read(source);
        EXPECT_EQ(seen.started, 0) << length;
        EXPECT_TRUE(seen.steps_seen.ends_with('1')) << length << ": " << seen.steps_seen;
        EXPECT_EQ(seen.count, 1) << length;
        EXPECT_EQ(seen.streams.err.rfind("\nFatal Error at (file " + source.system_id() + ", line ", 0), 0u)
            << length;
    }
}

TYPED_TEST(SaxParser, ReadsNothingOfAPrefixThatStopsBeforeTheRoot) {
    for (size_t length = 0; length <= whole_document.find("<r>"); ++length) {
        TypeParam source(whole_document.substr(0, length));
        const outcome seen = read(source);
        // a cut right behind a "<" or what may be one comes out with the first step
        EXPECT_EQ(seen.steps_seen, seen.started == 0 ? "1" : "") << length;
        EXPECT_EQ(seen.count, 1) << length;
        EXPECT_EQ(seen.streams.err.rfind("\nFatal Error at (file " + source.system_id() + ", line ", 0), 0u)
            << length;
        EXPECT_EQ(seen.streams.err.ends_with("\nscanFirst() failed\n"), seen.started == 1) << length;
    }
}

TYPED_TEST(SaxParser, MayBeDestroyedAtAnyPoint) {
    for (int step_count = 0; step_count < 10; ++step_count) {
        TypeParam source("<r n=\"1\">text<a m=\"2\">text</a></r>");
        ASSERT_EQ(source.start(), 0);
        for (int i = 0; i < step_count; ++i)
            step(source.parser());
    }
    TypeParam never_started("<r/>");
    EXPECT_TRUE(never_started.parser().init_ok());
    EXPECT_EQ(never_started.parser().get_error_counter(), 0);
}

TYPED_TEST(SaxParser, MayLiveBesideOthers) {
    auto outer = std::make_unique<TypeParam>("<r><a>1</a><b>2</b></r>");
    ASSERT_EQ(outer->start(), 0);
    EXPECT_EQ(step(outer->parser()), "r");
    auto inner = std::make_unique<TypeParam>("<s>3</s>");
    ASSERT_EQ(inner->start(), 0);
    EXPECT_EQ(step(inner->parser()), "s");
    EXPECT_EQ(step(outer->parser()), "a");
    EXPECT_EQ(step(inner->parser()), "s[3]");
    EXPECT_EQ(step(outer->parser()), "a[1]");
    inner.reset();
    EXPECT_EQ(steps(outer->parser()), "~ b b[2] ~ ~ ~ -1");
}

} // namespace
