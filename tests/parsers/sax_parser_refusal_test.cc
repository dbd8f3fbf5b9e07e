/// What the two pull readers refuse: a document is self-contained, and what it may cost is bounded.

#include "SAX_File_Parser.h"
#include "SAX_Memory_Parser.h"

#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

#include "support/reader_forms.h"
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

std::string repeated(const char *text, int count) {
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

const std::string with_entity = "<!DOCTYPE r [<!ELEMENT r ANY><!ATTLIST r a CDATA #IMPLIED><!ENTITY e \"E\">"
                                "<!ENTITY two \"&e;E\">]>";

TYPED_TEST(SaxParserRefusal, MayExpandEntitiesAThousandTimes) {
    const std::string documents[] = {
        with_entity + "<r>" + repeated("&e;", 1000) + "</r>",
        with_entity + "<r>" + repeated("&two;", 500) + "</r>",
        with_entity + "<r a=\"" + repeated("&e;", 1000) + "\"/>",
        with_entity + "<r a=\"" + repeated("&e;", 500) + "\">" + repeated("&e;", 500) + "</r>",
        with_entity + "<r>" + repeated("&amp;&#65;&lt;", 2000) + "</r>", // these do not count
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

TYPED_TEST(SaxParserRefusal, MayNotExpandThemOnceMore) {
    const struct {
        std::string content, steps;
    } rows[] = {
        {"<r>" + repeated("&e;", 1001) + "</r>", "r r[E]" + repeated(" ~", 999) + " 1"},
        {"<r>" + repeated("&two;", 501) + "</r>", "r r[E]" + repeated(" ~", 999) + " 1"},
        {"<r a=\"" + repeated("&e;", 1001) + "\"/>", "1"},
        {"<r a=\"" + repeated("&e;", 500) + "\">" + repeated("&e;", 501) + "</r>",
         "r r[E]" + repeated(" ~", 499) + " 1"},
    };
    for (const auto &row : rows) {
        TypeParam source(with_entity + row.content);
        const outcome seen = read(source);
        EXPECT_EQ(seen.started, 0);
        EXPECT_EQ(seen.count, 1);
        EXPECT_TRUE(seen.steps_seen == row.steps)
            << row.content.substr(0, 20) << seen.steps_seen.substr(0, 200);
        EXPECT_EQ(without_column(seen.streams.err),
                  "\nFatal Error at (file " + source.system_id() +
                      ", line 1, char #): parser has encountered more than '1000' entity expansions in the "
                      "document; this is the limit imposed by the application\n");
    }
}

/// Entities, each of which is ten of the one before: the third is a hundred of the first.
std::string bomb(const std::string &kind, const std::string &reference_mark) {
    std::string all = "<!ENTITY " + kind + " e0 ' '>";
    for (int i = 1; i < 3; ++i) {
        const std::string one_before = reference_mark + "e" + std::to_string(i - 1) + ";";
        all += "<!ENTITY " + kind + " e" + std::to_string(i) + " '" + repeated(one_before.c_str(), 10) + "'>";
    }
    return all;
}

// Used or not: the XML library does not count what is used as a parameter or in a default.
TYPED_TEST(SaxParserRefusal, MayNotDeclareEntitiesOfTooMuch) {
    const std::string all[] = {
        bomb("", "&"),
        bomb("%", "&#37;"),
        "<!ENTITY a '&a;'>",
        "<!ENTITY a '&b;'><!ENTITY b '&a;'>",
        "<!ENTITY a '" + std::string(4097, 'x') + "'>",
    };
    for (const std::string &entities : all) {
        const std::string declared = "<!DOCTYPE r [<!ELEMENT r ANY>" + entities;
        TypeParam source(declared + "]><r/>");
        const outcome seen = read(source);
        EXPECT_EQ(seen.started, 1) << entities;
        EXPECT_EQ(seen.steps_seen, "") << entities;
        EXPECT_EQ(seen.count, 1) << entities;
        EXPECT_EQ(seen.streams.err,
                  "\nFatal Error at (file " + source.system_id() + ", line 1, char " +
                      std::to_string(declared.size() + 1) +
                      "): The entities of this document stand for too much text\nscanFirst() failed\n")
            << entities;
    }
}

/// A content model with as many groups as a table of its states has bits.
std::string content_model(int groups) {
    return "<!DOCTYPE r [<!ELEMENT a EMPTY><!ELEMENT b EMPTY><!ELEMENT r ((a|b)*,a" +
           repeated(",(a|b)", groups) + ")>]>";
}

TYPED_TEST(SaxParserRefusal, MayNotHaveAContentModelOfEndlessStates) {
    const std::string good = "<r><a/>" + repeated("<b/>", 10) + "</r>";
    TypeParam source(content_model(10) + good);
    EXPECT_EQ(read(source).count, 0);
    for (int groups : {11, 25, 500}) {
        const std::string document = content_model(groups) + "<r/>";
        TypeParam hostile(document);
        const outcome seen = read(hostile);
        EXPECT_EQ(seen.count, 1) << groups;
        EXPECT_EQ(seen.streams.err, "\nFatal Error at (file " + hostile.system_id() + ", line 1, char " +
                                        std::to_string(content_model(groups).size() - 1) +
                                        "): The content models of this document have too many states\n"
                                        "scanFirst() failed\n")
            << groups;
    }
}

/// The one report of a document whose root is declared by `model`, or "" when it is read.
template <class Source> std::string report_of_model(const std::string &model, const std::string &content) {
    const std::string declared = "<!DOCTYPE r [<!ELEMENT a EMPTY><!ELEMENT r " + model + ">";
    Source source(declared + "]><r>" + content + "</r>");
    const outcome seen = read(source);
    EXPECT_EQ(seen.count, seen.streams.err.empty() ? 0 : 1);
    return replace_all(seen.streams.err,
                       "\nFatal Error at (file " + source.system_id() + ", line 1, char " +
                           std::to_string(declared.size() + 1) + "): ",
                       "");
}

// Such a model once overflowed the stack at 50,000 levels
TYPED_TEST(SaxParserRefusal, MayNotHaveAContentModelOfEndlessDepth) {
    const auto model = [](int marks) { return repeated("(", marks) + "a" + repeated(")*", marks); };
    EXPECT_EQ(report_of_model<TypeParam>(model(1000), "<a/>"), "");
    EXPECT_EQ(report_of_model<TypeParam>(model(1100), "<a/>"),
              "The content models of this document have too many states\nscanFirst() failed\n");
}

// 500 bytes of references stood for gigabytes of default values
TYPED_TEST(SaxParserRefusal, MayNotHaveDefaultsOfEndlessText) {
    const std::string declared = "<!DOCTYPE r [<!ELEMENT r ANY><!ENTITY e '" + repeated("x", 4096) +
                                 "'><!ATTLIST r a CDATA '" + repeated("&e;", 1000) + "'>]>";
    TypeParam once(declared + "<r/>");
    const outcome seen = read(once);
    EXPECT_EQ(seen.count, 1);
    EXPECT_EQ(without_column(seen.streams.err),
              "\nFatal Error at (file " + once.system_id() +
                  ", line 1, char #): The declarations of this document, with the default values that they "
                  "give, are too long\nscanFirst() failed\n");
}

TYPED_TEST(SaxParserRefusal, MayGiveShortDefaultsToAnyNumberOfElements) {
    TypeParam source("<!DOCTYPE r [<!ELEMENT r ANY><!ATTLIST r a CDATA '" + repeated("x", 64) + "'>]><r>" +
                     repeated("<r/>", 100000) + "</r>");
    EXPECT_EQ(read(source).count, 0);
}

/// The reports of a document with two attributes of a type, which name an identifier and an entity that is no
/// text; the name has `length` characters.
template <class Source> std::string reports_of_references(const std::string &type, std::size_t length) {
    const std::string name(length, 'n');
    Source source("<!DOCTYPE r [<!ELEMENT r ANY><!NOTATION n SYSTEM 'n'><!ENTITY " + name +
                  " SYSTEM 'u' NDATA n><!ATTLIST r i ID #IMPLIED a " + type + " #IMPLIED>]><r i='" + name +
                  "' a='" + name + "'><r a='" + name + "'/></r>");
    const outcome seen = read(source);
    EXPECT_EQ(seen.count, seen.streams.err.empty() ? 0 : 1);
    return replace_all(without_column(seen.streams.err),
                       "\nFatal Error at (file " + source.system_id() + ", line 1, char #): ", "");
}

TYPED_TEST(SaxParserRefusal, MayReferToIdentifiersAndEntitiesInSomeThousandCharacters) {
    for (const char *type : {"IDREF", "IDREFS", "ENTITY", "ENTITIES"}) {
        EXPECT_EQ(reports_of_references<TypeParam>(type, 32'768), "") << type;
        EXPECT_EQ(reports_of_references<TypeParam>(type, 32'769),
                  "The attributes of this document have too many references\n")
            << type;
    }
    for (const char *type : {"CDATA", "NMTOKEN", "NMTOKENS"})
        EXPECT_EQ(reports_of_references<TypeParam>(type, 32'769), "") << type;
}

TYPED_TEST(SaxParserRefusal, MayRepeatNamesInItsContentModels) {
    TypeParam source("<!DOCTYPE r [<!ELEMENT a EMPTY><!ELEMENT b EMPTY><!ELEMENT r ((a,b)|(b,a)|(a,a,b,b))>]>"
                     "<r><b/><a/></r>");
    EXPECT_EQ(read(source).count, 0);
}

} // namespace
