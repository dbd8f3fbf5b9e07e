/// What the elements of an env index dictionary do, and how its readers fail.

#include "parse_env_index_dictionary.h"

#include <cfloat>
#include <cmath>
#include <iterator>
#include <random>

#include <gtest/gtest.h>

#include "support/element.h"
#include "support/env_dictionary_readers.h"
#include "xml_platform.h"

namespace {

std::string envindexdict(const std::string &body) { return "<ENVINDEXDICT>" + body + "</ENVINDEXDICT>"; }

std::string letters(std::size_t length) {
    std::string text;
    for (std::size_t i = 0; i < length; ++i)
        text += static_cast<char>('a' + i % 26);
    return text;
}

const char ordinary_dictionary[] = R"(<?xml version="1.0" encoding="ISO-8859-1" ?>
<ENVINDEXDICT>
	<isodate>2021-07-01T13:05:09</isodate>
<CHANNEL>
<INDEX>3</INDEX>
<PROP>ORVIN/A/TEMP</PROP>
<DABS>0.500000</DABS>
<DREL>0.010000</DREL>
</CHANNEL>
<CHANNEL>
<INDEX>4</INDEX>
<PROP>ORVIN/B/TEMP</PROP>
<DABS>-2.000000</DABS>
<DREL>0.000000</DREL>
</CHANNEL>
</ENVINDEXDICT>

)";
const char ordinary_entries[] = "3 'ORVIN/A/TEMP' 0.5 0.00999999978; 4 'ORVIN/B/TEMP' -2 0";

template <class Layout> class ParseEnvIndexDictionary : public testing::Test {};

} // namespace

TYPED_TEST_SUITE(ParseEnvIndexDictionary, both_layouts);

TYPED_TEST(ParseEnvIndexDictionary, ReadsAnOrdinaryDictionary) {
    expect_entries<TypeParam>(ordinary_dictionary, ordinary_entries);
}

TYPED_TEST(ParseEnvIndexDictionary, ReadsEmptyDictionariesWithoutAWord) {
    for (const char *document :
         {"<ENVINDEXDICT/>", "<ENVINDEXDICT></ENVINDEXDICT>", "<ENVINDEXDICT>text</ENVINDEXDICT>",
          "<ENVINDEXDICT><CHANNEL/></ENVINDEXDICT>"})
        expect_entries<TypeParam>(document, "");
}

TYPED_TEST(ParseEnvIndexDictionary, AppendsToWhatTheListHeld) {
    for (reader_form form : both_readers) {
        dictionary<TypeParam> list;
        const auto *const first = list.add(9, "OLD");
        EXPECT_EQ(read_dictionary<TypeParam>(form, ordinary_dictionary, &list.entries).result, 0);
        EXPECT_EQ(read_dictionary<TypeParam>(form, "<ENVINDEXDICT/>", &list.entries).result, 0);
        EXPECT_EQ(describe(list.entries), std::string("9 'OLD'; ") + ordinary_entries);
        EXPECT_EQ(list.entries[0], first);
    }
}

// Which elements are heeded where

namespace {

const struct {
    const char *body;
    const char *entries;
} sequences[] = {
    // an entry is listed with the second of its index and name
    {"<CHANNEL><INDEX>1</INDEX><PROP>a</PROP></CHANNEL>", "1 'a'"},
    {"<CHANNEL><PROP>a</PROP><INDEX>1</INDEX></CHANNEL>", "1 'a'"},
    {"<CHANNEL/><INDEX>1</INDEX><PROP>a</PROP>", "1 'a'"},
    {"<CHANNEL><X><INDEX>1</INDEX></X></CHANNEL><PROP>a</PROP>", "1 'a'"},
    {"<CHANNEL><INDEX>1<PROP>a</PROP></INDEX></CHANNEL>", "1 'a'"},
    {"<CHANNEL>some text<INDEX>1</INDEX><PROP>a</PROP></CHANNEL>", "1 'a'"},
    {"<CHANNEL><!-- said again --><INDEX>1</INDEX><PROP>a</PROP></CHANNEL>", "1 'a'"},
    // deltas come before or after that, or not at all
    {"<CHANNEL><DABS>1</DABS><DREL>2</DREL><INDEX>1</INDEX><PROP>a</PROP></CHANNEL>", "1 'a' 1 2"},
    {"<CHANNEL><PROP>a</PROP><DREL>2</DREL><INDEX>1</INDEX><DABS>1</DABS></CHANNEL>", "1 'a' 1 2"},
    {"<CHANNEL><PROP>a</PROP><INDEX>1</INDEX></CHANNEL><DREL>2</DREL>", "1 'a' 0 2"},
    {"<CHANNEL><PROP>a</PROP><INDEX>1</INDEX><DABS>1</DABS></CHANNEL>", "1 'a' 1 0"},
    {"<CHANNEL><PROP>a</PROP><INDEX>1</INDEX><DABS>1</DABS><DABS>3</DABS><DABS/></CHANNEL>", "1 'a' 3 0"},
    // an entry that lacks one is not listed, and the next one knows nothing of it
    {"<CHANNEL><PROP>a</PROP><DABS>1</DABS><DREL>2</DREL></CHANNEL>", ""},
    {"<CHANNEL><INDEX>1</INDEX><DABS>1</DABS></CHANNEL>", ""},
    {"<CHANNEL><PROP>a</PROP><DABS>1</DABS><DREL>2</DREL></CHANNEL><CHANNEL><INDEX>1</INDEX></CHANNEL>", ""},
    {"<CHANNEL><INDEX>1</INDEX></CHANNEL><CHANNEL><PROP>a</PROP></CHANNEL>", ""},
    {"<CHANNEL><PROP>long name</PROP><DABS>1</DABS><DREL>2</DREL></CHANNEL>"
     "<CHANNEL><INDEX>1</INDEX><PROP>a</PROP></CHANNEL>",
     "1 'a'"},
    {"<CHANNEL><INDEX>1</INDEX><PROP>a</PROP></CHANNEL><CHANNEL><PROP>b</PROP></CHANNEL>", "1 'a'"},
    {"<CHANNEL><INDEX>1</INDEX><PROP>a</PROP></CHANNEL><CHANNEL><INDEX>2</INDEX></CHANNEL>"
     "<CHANNEL><INDEX>3</INDEX><PROP>c</PROP></CHANNEL>",
     "1 'a'; 3 'c'"},
    {"<CHANNEL><INDEX>1</INDEX><CHANNEL/><PROP>a</PROP></CHANNEL>", ""},
    // without a text there is nothing
    {"<CHANNEL><INDEX/><PROP>a</PROP></CHANNEL>", ""},
    {"<CHANNEL><INDEX>1</INDEX><PROP></PROP></CHANNEL>", ""},
    {"<CHANNEL><INDEX> </INDEX><PROP>a</PROP></CHANNEL>", ""},
    {"<CHANNEL><INDEX>1</INDEX><PROP> \n\t</PROP></CHANNEL>", ""},
    // before the first channel everything is ignored
    {"<INDEX>1</INDEX><PROP>a</PROP><DABS>1</DABS><DREL>2</DREL>", ""},
    {"<INDEX>1</INDEX><CHANNEL><PROP>a</PROP></CHANNEL>", ""},
    {"<PROP>a</PROP><CHANNEL><INDEX>1</INDEX></CHANNEL>", ""},
    {"<DABS>1</DABS><DREL>2</DREL><CHANNEL><INDEX>1</INDEX><PROP>a</PROP></CHANNEL>", "1 'a'"},
    // a further index after name and index lists the entry again, and the later index wins
    {"<CHANNEL><PROP>a</PROP><INDEX>1</INDEX><INDEX>2</INDEX></CHANNEL>", "2 'a'; #0"},
    {"<CHANNEL><PROP>a</PROP><INDEX>1</INDEX><INDEX>2</INDEX><INDEX>3</INDEX></CHANNEL>", "3 'a'; #0; #0"},
    {"<CHANNEL><PROP>a</PROP><INDEX>1</INDEX><PROP>b</PROP></CHANNEL>", "1 'b'"},
    {"<CHANNEL><PROP>a</PROP><INDEX>1</INDEX><PROP>b</PROP><INDEX>2</INDEX></CHANNEL>", "2 'b'; #0"},
    // likewise a further name after index and name
    {"<CHANNEL><INDEX>1</INDEX><PROP>a</PROP><PROP>b</PROP></CHANNEL>", "1 'b'; #0"},
    {"<CHANNEL><INDEX>1</INDEX><PROP>a</PROP><PROP>b</PROP><PROP>c</PROP></CHANNEL>", "1 'c'; #0; #0"},
    {"<CHANNEL><INDEX>1</INDEX><PROP>a</PROP><INDEX>2</INDEX></CHANNEL>", "2 'a'"},
    {"<CHANNEL><INDEX>1</INDEX><PROP>a</PROP><INDEX>2</INDEX><PROP>b</PROP></CHANNEL>", "2 'b'; #0"},
    {"<CHANNEL><INDEX>1</INDEX><PROP>a</PROP><PROP>b</PROP></CHANNEL>"
     "<CHANNEL><PROP>c</PROP><INDEX>2</INDEX><INDEX>3</INDEX></CHANNEL>",
     "1 'b'; #0; 3 'c'; #2"},
    // several of one before the other
    {"<CHANNEL><INDEX>1</INDEX><INDEX>2</INDEX><PROP>a</PROP></CHANNEL>", "2 'a'"},
    {"<CHANNEL><PROP>a longer one</PROP><PROP>b</PROP><INDEX>1</INDEX></CHANNEL>", "1 'b'"},
    // names are exact, and other elements and attributes mean nothing
    {"<channel><INDEX>1</INDEX><PROP>a</PROP></channel>", ""},
    {"<CHANNELS/><INDEX>1</INDEX><PROP>a</PROP>", ""},
    {"<CHANNEL><index>1</index><PROP>a</PROP></CHANNEL>", ""},
    {"<CHANNEL INDEX='7' PROP='x'><INDEX>1</INDEX><ENVINDEXDICT/><NAME>n</NAME><PROP>a</PROP></CHANNEL>",
     "1 'a'"},
};

} // namespace

TYPED_TEST(ParseEnvIndexDictionary, ListsAnEntryWithTheSecondOfIndexAndName) {
    const xml_platform up; // starting it for each document would take most of the time
    for (const auto &row : sequences)
        expect_entries<TypeParam>(envindexdict(row.body), row.entries);
}

namespace {

const struct {
    const char *tag;
    const char *text;
} alphabet[] = {
    {"CHANNEL", ""}, {"CHANNEL", ""}, {"CHANNEL", "text"}, {"INDEX", "1"},     {"INDEX", "2"}, {"INDEX", "3"},
    {"INDEX", ""},   {"PROP", "a"},   {"PROP", "b"},       {"PROP", "longer"}, {"PROP", ""},   {"DABS", "4"},
    {"DABS", "x"},   {"DREL", "5"},   {"DREL", ""},        {"OTHER", "6"},
};

/// The reader as a list of rules on the steps, with its flags kept apart.
template <class Layout> class model {
public:
    explicit model(dictionary<Layout> &list) : list_(list) {}

    void step(const std::string &tag, const std::string &value) {
        if (tag == "CHANNEL")
            begin();
        else if (!active || value.empty())
            return;
        else if (tag == "INDEX")
            index(value);
        else if (tag == "PROP")
            prop(value);
        else if (tag == "DABS" && value != "x")
            entry->data.env_ch_abs_delta = 4;
        else if (tag == "DREL")
            entry->data.env_ch_rel_delta = 5;
    }

    ~model() {
        if (!stored)
            free(entry);
    }

private:
    void begin() {
        if (!entry || stored)
            entry = static_cast<typename Layout::entry *>(malloc(sizeof(typename Layout::entry)));
        memset(static_cast<void *>(entry), 0, sizeof(typename Layout::entry));
        entry->index = -1;
        index_seen = prop_seen = stored = false;
        active = true;
    }

    void index(const std::string &value) {
        entry->index = std::stoi(value);
        index_seen = true;
        if (!prop_seen)
            return;
        list_.entries.push_back(entry);
        stored = true;
        index_seen = false;
    }

    void prop(const std::string &value) {
        memset(entry->data.env_prop, 0, Layout::name_size);
        memcpy(entry->data.env_prop, value.data(), value.size());
        prop_seen = true;
        if (!index_seen)
            return;
        list_.entries.push_back(entry);
        stored = true;
        prop_seen = false;
    }

    dictionary<Layout> &list_;
    typename Layout::entry *entry = nullptr;
    bool active = false, index_seen = false, prop_seen = false, stored = false;
};

} // namespace

TYPED_TEST(ParseEnvIndexDictionary, ReadsAnySequenceAsTheFlagsSay) {
    const xml_platform up;
    std::mt19937 random(20240514);
    std::size_t entries = 0;
    for (int run = 0; run < 2000; ++run) {
        dictionary<TypeParam> wanted, list;
        model<TypeParam> rules(wanted);
        std::string document = "<ENVINDEXDICT>";
        for (std::size_t left = random() % 20; left > 0; --left) {
            const auto &[tag, text] = alphabet[random() % std::size(alphabet)];
            document += element(tag, text);
            rules.step(tag, "");
            rules.step(tag, text); // the end tag delivers an element without text again
        }
        document += "</ENVINDEXDICT>";
        ASSERT_EQ(TypeParam::read_memory(document.data(), &list.entries), 0) << document;
        ASSERT_EQ(describe(list.entries), describe(wanted.entries)) << document;
        entries += list.entries.size();
    }
    EXPECT_GT(entries, 1000U); // the sequences do get somewhere
}

// Values

TYPED_TEST(ParseEnvIndexDictionary, ReadsDecimalIndicesOf32Bits) {
    const struct {
        const char *text, *index;
    } rows[] = {
        {"0", "0"},
        {"42", "42"},
        {"-7", "-7"},
        {"+7", "7"},
        {"007", "7"},
        {" \n\t12", "12"},
        {"12 and more", "12"},
        {"3.9", "3"},
        {"0x1F", "0"},
        {"abc", "0"},
        {"-", "0"},
        {"2147483647", "2147483647"},
        {"2147483648", "-2147483648"},
        {"4294967295", "-1"},
        {"4294967301", "5"},
        {"99999999999999999999", "-1"},
        {"-99999999999999999999", "0"},
    };
    const xml_platform up;
    for (const auto &row : rows)
        expect_entries<TypeParam>(envindexdict("<CHANNEL/><PROP>a</PROP>" + element("INDEX", row.text)),
                                  std::string(row.index) + " 'a'");
}

TYPED_TEST(ParseEnvIndexDictionary, ReadsDeltasAndKeepsTheOldOneForNoNumber) {
    constexpr float kept = 77; // what the field held before
    const struct {
        const char *text;
        float value;
    } rows[] = {
        {"0.5", 0.5F},
        {"-2.5", -2.5F},
        {"+5", 5},
        {".5", 0.5F},
        {"5.", 5},
        {"1e3", 1000},
        {"1.5E-2", 0.015F},
        {" \n 7 ", 7},
        {"5abc", 5},
        {"1,5", 1},
        {"0x1p3", 8},
        {"16777217", 16777216},
        {"0.1", 0.1F},
        {"340282346638528859811704183484516925440.000000", FLT_MAX},
        {"-340282346638528859811704183484516925440.000000", -FLT_MAX},
        {"1e50", INFINITY},
        {"-1e50", -INFINITY},
        {"inf", INFINITY},
        {"1e-60", 0},
        {"abc", kept},
        {"x", kept},
        {"-", kept},
        {"--1", kept},
        {"e5", kept},
        {",5", kept},
        {".", kept},
    };
    const xml_platform up;
    for (const auto &row : rows)
        for (const char *tag : {"DABS", "DREL"}) {
            dictionary<TypeParam> wanted;
            const bool is_abs = std::string(tag) == "DABS";
            wanted.add(1, "a", is_abs ? row.value : 3, is_abs ? 3 : row.value);
            expect_entries<TypeParam>(
                envindexdict("<CHANNEL/><DABS>3</DABS><DREL>3</DREL><PROP>a</PROP><INDEX>1</INDEX>" +
                             element(tag, "77") + element(tag, row.text)),
                describe(wanted.entries));
        }
}

TYPED_TEST(ParseEnvIndexDictionary, CutsNamesAtTheirField) {
    constexpr std::size_t size = TypeParam::name_size;
    for (std::size_t length : {std::size_t{1}, size - 2, size - 1, size, size + 1, std::size_t{100}, 2 * size,
                               std::size_t{5000}}) {
        const std::string name = letters(length);
        expect_entries<TypeParam>(envindexdict("<CHANNEL/><INDEX>1</INDEX>" + element("PROP", name) +
                                               "<DABS>1</DABS><DREL>2</DREL>"),
                                  "1 '" + name.substr(0, size - 1) + "' 1 2");
    }
}

TYPED_TEST(ParseEnvIndexDictionary, LeavesNothingOfALongerNameBehindAShorterOne) {
    for (std::size_t length : {std::size_t{10}, TypeParam::name_size, std::size_t{5000}})
        expect_entries<TypeParam>(envindexdict("<CHANNEL/><INDEX>1</INDEX>" +
                                               element("PROP", letters(length)) + "<INDEX>2</INDEX>" +
                                               element("PROP", "short")),
                                  "2 'short'; #0");
}

TYPED_TEST(ParseEnvIndexDictionary, KeepsNamesAsTheyStand) {
    for (const char *name : {" padded ", "%s%n", "a\tb", "\xc3\xa4"})
        expect_entries<TypeParam>(envindexdict("<CHANNEL/><INDEX>1</INDEX>" + element("PROP", name)),
                                  std::string("1 '") + name + "'");
}

// Failures

namespace {

/// Both readers must fail alike and leave an entry of before alone.
template <class Layout>
void expect_failure(const std::string &document, int result, const std::string &err,
                    const std::string &entries) {
    for (reader_form form : both_readers) {
        dictionary<Layout> list;
        list.add(9, "OLD");
        const read_outcome seen = read_dictionary<Layout>(form, document, &list.entries);
        EXPECT_EQ(seen.result, result) << reader_name(form) << ": " << document;
        EXPECT_EQ(seen.out, "") << reader_name(form) << ": " << document;
        EXPECT_EQ(seen.err, err) << reader_name(form) << ": " << document;
        EXPECT_EQ(describe(list.entries), "9 'OLD'" + entries) << reader_name(form) << ": " << document;
    }
}

} // namespace

TYPED_TEST(ParseEnvIndexDictionary, RefusesEveryOtherRoot) {
    for (const char *root :
         {"ENVINDEXDICTX", "envindexdict", "EnvIndexDict", "ENVINDEXDIC", "CHANNEL", "BMR"})
        expect_failure<TypeParam>(element(root, "<CHANNEL><INDEX>1</INDEX><PROP>a</PROP></CHANNEL>"), 1,
                                  std::string("WRONG root tag: '") + root + "' must be 'ENVINDEXDICT'\n", "");
}

TYPED_TEST(ParseEnvIndexDictionary, KeepsWhatWasReadBeforeAnError) {
    expect_failure<TypeParam>(
        "<ENVINDEXDICT>\n<CHANNEL><INDEX>1</INDEX><PROP>a</PROP>\n<DABS>1</DREL>", 1,
        "\nFatal Error at (file DOCUMENT, line 3, char 10): expected end of tag 'DABS'\n", "; 1 'a' 1 0");
}

TYPED_TEST(ParseEnvIndexDictionary, AddsTheParsersReportsToItsOwnFailure) {
    // the encoding is warned of before the root is read
    for (reader_form form : both_readers) {
        dictionary<TypeParam> list;
        const read_outcome seen = read_dictionary<TypeParam>(
            form, std::string("<?xml version=\"1.0\" encoding=\"UTF-16\"?>") + envindexdict("<CHANNEL/>"),
            &list.entries);
        EXPECT_EQ(seen.result, 2) << reader_name(form);
        EXPECT_EQ(seen.err.rfind("\nWarning at (file DOCUMENT, line 1, char ", 0), 0U) << seen.err;
    }
}

TYPED_TEST(ParseEnvIndexDictionary, FailsOnADocumentWithoutARoot) {
    for (const char *document : {"", " ", "text", "<!-- none -->", "<?xml version=\"1.0\"?>"})
        for (reader_form form : both_readers) {
            dictionary<TypeParam> list;
            const read_outcome seen = read_dictionary<TypeParam>(form, document, &list.entries);
            EXPECT_GE(seen.result, 2)
                << reader_name(form) << ": " << document; // its own 1 and what was reported
            EXPECT_EQ(seen.err.rfind("\nFatal Error at (file DOCUMENT, ", 0), 0U) << seen.err;
            EXPECT_TRUE(list.entries.empty());
        }
}

TYPED_TEST(ParseEnvIndexDictionary, RefusesANullSourceWithoutAWord) {
    dictionary<TypeParam> list;
    list.add(9, "OLD");
    const captured seen = capture([&] {
        EXPECT_EQ(TypeParam::read_memory(nullptr, &list.entries), 1);
        EXPECT_EQ(TypeParam::read_file(nullptr, &list.entries), 1);
    });
    EXPECT_EQ(seen.out + seen.err, "");
    EXPECT_EQ(describe(list.entries), "9 'OLD'");
}

TYPED_TEST(ParseEnvIndexDictionary, RefusesANullListWithoutAWord) {
    for (const char *document : {ordinary_dictionary, "<OTHER/>", "no document"})
        for (reader_form form : both_readers) {
            const read_outcome seen = read_dictionary<TypeParam>(form, document, nullptr);
            EXPECT_EQ(seen.result, 1) << reader_name(form) << ": " << document;
            EXPECT_EQ(seen.out + seen.err, "") << reader_name(form) << ": " << document;
        }
}

TYPED_TEST(ParseEnvIndexDictionary, FailsOnAFileThatIsNotThere) {
    const temporary_folder folder;
    std::string missing = folder / "missing.xml";
    dictionary<TypeParam> list;
    const captured seen = capture([&] { EXPECT_EQ(TypeParam::read_file(missing.data(), &list.entries), 1); });
    EXPECT_EQ(seen.out, "");
    EXPECT_EQ(seen.err.rfind("\nError during parsing memory stream:\nException message is:  \n", 0), 0U)
        << seen.err;
    EXPECT_TRUE(list.entries.empty());
}

TYPED_TEST(ParseEnvIndexDictionary, EveryCutDocumentEndsWithAnErrorAndLosesNothing) {
    const xml_platform up;
    const std::string whole = ordinary_dictionary;
    const std::size_t inside = whole.find("<ENVINDEXDICT>") + 1, end = whole.find("</ENVINDEXDICT>") + 15;
    std::size_t so_far = 0;
    for (std::size_t length = inside; length < end; ++length) {
        std::string entries[2];
        for (reader_form form : both_readers) {
            dictionary<TypeParam> list;
            const read_outcome seen =
                read_dictionary<TypeParam>(form, whole.substr(0, length), &list.entries);
            EXPECT_GT(seen.result, 0) << length;
            EXPECT_NE(seen.err, "") << length;
            EXPECT_GE(list.entries.size(), so_far) << length;
            so_far = list.entries.size(); // nothing is rolled back
            entries[form] = describe(list.entries);
        }
        EXPECT_EQ(entries[READ_FILE], entries[READ_MEMORY]) << length;
    }
    EXPECT_EQ(so_far, 2U);
}
