/// What the two pull readers refuse: a document is self-contained, and what it may cost is bounded.

#include "SAX_File_Parser.h"
#include "SAX_Memory_Parser.h"

#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

#include "support/reader_forms.h"
#include "support/repeated_text.h"
#include "support/sax_sources.h"
#include "support/test_files.h"
#include "support/watched.h"

namespace {

template <class Source> class SaxParserRefusal : public testing::Test {};
using sources = testing::Types<memory_source, file_source>;
TYPED_TEST_SUITE(SaxParserRefusal, sources, );

TEST(SaxParserRefusalWatchedFile, KnowsWhenItIsOpened) {
    const temporary_file file("secret");
    const watched_file watch(file.path());
    EXPECT_FALSE(watch.was_opened());
    EXPECT_EQ(file.text(), "secret");
    EXPECT_TRUE(watch.was_opened());
}

/// The report with "#" for the column, which depends on the length of names made up by the test and on where
/// the parser happens to be.
std::string without_column(std::string report) {
    const size_t begin = report.find(", char ");
    const size_t end = report.find(')', begin);
    return end == std::string::npos ? report : report.replace(begin, end - begin, ", char #");
}

struct external_case {
    const char *document; // "<FILE>" stands for what it refers to
    int started;
    const char *steps;
    const char *message; // after file, line and column
};
const external_case external_cases[] = {
    {"<!DOCTYPE r SYSTEM \"<FILE>\"><r>x</r>", 1, "",
     "unable to open DTD document '<FILE>'\nscanFirst() failed\n"},
    {"<!DOCTYPE r PUBLIC \"-//X//EN\" \"<FILE>\"><r>x</r>", 1, "",
     "unable to open DTD document '<FILE>'\nscanFirst() failed\n"},
    {"<!DOCTYPE r SYSTEM \"<FILE>\" [<!ELEMENT r ANY>]><r>x</r>", 1, "",
     "unable to open DTD document '<FILE>'\nscanFirst() failed\n"},
    {"<!DOCTYPE r [<!ELEMENT r ANY><!ENTITY e SYSTEM \"<FILE>\">]><r>&e;</r>", 0, "r 1",
     "unable to open external entity '<FILE>'\n"},
    {"<!DOCTYPE r [<!ELEMENT r ANY><!ENTITY e PUBLIC \"-//X//EN\" \"<FILE>\">]><r>a&e;</r>", 0, "r 1",
     "unable to open external entity '<FILE>'\n"},
    {"<!DOCTYPE r [<!ENTITY % e SYSTEM \"<FILE>\"> %e; <!ELEMENT r ANY>]><r>x</r>", 1, "",
     "unable to open external entity '<FILE>'\nscanFirst() failed\n"},
};

TYPED_TEST(SaxParserRefusal, OpensNeitherFileNorAddress) {
    setenv("no_proxy", "*", 1);
    const temporary_file secret("secret");
    for (const auto &c : external_cases) {
        const watched_file watch(secret.path());
        const watched_port port;
        for (const std::string &target : {secret.path(), "file://" + secret.path(), port.address()}) {
            const std::string document = with_file(c.document, target);
            TypeParam source(document);
            const outcome seen = read(source);
            EXPECT_EQ(seen.started, c.started) << document;
            EXPECT_EQ(seen.steps_seen, c.steps) << document;
            EXPECT_EQ(without_column(seen.streams.err),
                      "\nFatal Error at (file " + source.system_id() +
                          ", line 1, char #): " + with_file(c.message, target))
                << document;
            EXPECT_EQ(seen.count, 1) << document;
            EXPECT_FALSE(watch.was_opened()) << document;
            EXPECT_FALSE(port.was_called()) << document;
        }
    }
}

TYPED_TEST(SaxParserRefusal, MayDeclareWhatIsOutsideAsLongAsItIsNotUsed) {
    const temporary_file secret("secret");
    for (const char *outside : {"<!ENTITY e SYSTEM '<FILE>'>", "<!NOTATION n SYSTEM '<FILE>'>",
                                "<!NOTATION n PUBLIC 'n'><!ENTITY e SYSTEM '<FILE>' NDATA n>"}) {
        const watched_file watch(secret.path());
        TypeParam source("<!DOCTYPE r [<!ELEMENT r ANY>" + with_file(outside, secret.path()) + "]><r>x</r>");
        const outcome seen = read(source);
        EXPECT_EQ(seen.started, 0) << outside;
        EXPECT_EQ(seen.steps_seen, "r r[x] ~ ~ -1") << outside;
        EXPECT_EQ(seen.streams.err, "") << outside;
        EXPECT_FALSE(watch.was_opened()) << outside;
    }
}

TYPED_TEST(SaxParserRefusal, MayDeclareNoAttributes) {
    TypeParam source("<!DOCTYPE r [<!ELEMENT r ANY><!ATTLIST r>]><r>x</r>");
    const outcome seen = read(source);
    EXPECT_EQ(seen.started, 0);
    EXPECT_EQ(seen.steps_seen, "r r[x] ~ ~ -1");
    EXPECT_EQ(seen.streams.err, "");
}

const std::string with_entity = "<!DOCTYPE r [<!ELEMENT r ANY><!ATTLIST r a CDATA #IMPLIED><!ENTITY e \"E\">"
                                "<!ENTITY two \"&e;E\">]>";

TYPED_TEST(SaxParserRefusal, MayExpandEntities) {
    const std::string documents[] = {
        with_entity + "<r>" + times(2000, "&e;") + "</r>",
        with_entity + "<r>" + times(2000, "&two;") + "</r>",
        with_entity + "<r a=\"" + times(2000, "&e;") + "\"/>",
        with_entity + "<r a=\"" + times(2000, "&e;") + "\">" + times(2000, "&e;") + "</r>",
        with_entity + "<r>" + times(2000, "&amp;&#65;&lt;") + "</r>", // these do not count
    };
    for (const auto &document : documents) {
        TypeParam source(document);
        const outcome seen = read(source);
        EXPECT_EQ(seen.started, 0);
        EXPECT_EQ(seen.count, 0);
        EXPECT_EQ(seen.streams.err, "");
        EXPECT_TRUE(seen.steps_seen.ends_with(" -1")) << document.substr(0, 200);
    }
}

/// Entities, each of which is ten of the one before.
std::string bomb(const std::string &kind, const std::string &reference_mark) {
    std::string all = "<!ENTITY " + kind + " e0 ' '>";
    for (int i = 1; i < 10; ++i) {
        const std::string one_before = reference_mark + "e" + std::to_string(i - 1) + ";";
        all += "<!ENTITY " + kind + " e" + std::to_string(i) + " '" + times(10, one_before) + "'>";
    }
    return all;
}

/// A document of entities without end, and how its reports end.
struct bomb_case {
    const char *what;
    std::string document;
    const char *end;
};

const std::string any = "<!DOCTYPE r [<!ELEMENT r ANY>";
const bomb_case bombs[] = {
    {"in content", any + bomb("", "&") + "]><r>&e9;</r>", ""},
    {"in an attribute", any + "<!ATTLIST r a CDATA ''>" + bomb("", "&") + "]><r a='&e9;'/>", ""},
    {"in a default", any + bomb("", "&") + "<!ATTLIST r a CDATA '&e9;'>]><r/>", "scanFirst() failed\n"},
    {"in declarations", any + bomb("%", "&#37;") + "%e9;]><r/>", "scanFirst() failed\n"},
};

TYPED_TEST(SaxParserRefusal, MayNotExpandEntitiesWithoutEnd) {
    for (const bomb_case &row : bombs) {
        TypeParam source(row.document);
        const outcome seen = read(source);
        EXPECT_EQ(seen.count, 1) << row.what;
        EXPECT_EQ(without_column(seen.streams.err),
                  "\nFatal Error at (file " + source.system_id() +
                      ", line 1, char #): This document takes more work than its length allows\n" + row.end)
            << row.what;
    }
}

TYPED_TEST(SaxParserRefusal, MayDeclareEntitiesWithoutEndThatAreNotUsed) {
    TypeParam source(any + bomb("", "&") + bomb("%", "&#37;") + "<!ENTITY a '&b;'><!ENTITY b '&a;'>]><r/>");
    const outcome seen = read(source);
    EXPECT_EQ(seen.steps_seen, "r ~ -1");
    EXPECT_EQ(seen.streams.err, "");
}

TYPED_TEST(SaxParserRefusal, MayNotUseEntitiesThatNameEachOther) {
    TypeParam source(any + "<!ENTITY a '&b;'><!ENTITY b '&a;'>]><r>&a;</r>");
    const outcome seen = read(source);
    EXPECT_EQ(seen.count, 1);
    EXPECT_EQ(without_column(seen.streams.err), "\nFatal Error at (file " + source.system_id() +
                                                    ", line 1, char #): recursive entity expansion 'a'\n");
}

TYPED_TEST(SaxParserRefusal, MayGiveShortDefaultsToAnyNumberOfElements) {
    TypeParam source("<!DOCTYPE r [<!ELEMENT r ANY><!ATTLIST r a CDATA '" + times(64, "x") + "'>]><r>" +
                     times(100000, "<r/>") + "</r>");
    EXPECT_EQ(read(source).count, 0);
}

TYPED_TEST(SaxParserRefusal, MayRepeatNamesInItsContentModels) {
    TypeParam source("<!DOCTYPE r [<!ELEMENT a EMPTY><!ELEMENT b EMPTY><!ELEMENT r ((a,b)|(b,a)|(a,a,b,b))>]>"
                     "<r><b/><a/></r>");
    EXPECT_EQ(read(source).count, 0);
}

} // namespace
