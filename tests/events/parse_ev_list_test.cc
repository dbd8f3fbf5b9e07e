/// What the elements of an event list do, and how its readers fail.

#include "parse_ev_list.h"

#include <cstdint>

#include <gtest/gtest.h>

#include "support/element.h"
#include "support/event_list_readers.h"
#include "xml_platform.h"

namespace {

std::string bmr(const std::string &body) { return "<BMR>" + body + "</BMR>"; }

const char ordinary_list[] = R"(<?xml version="1.0" encoding="ISO-8859-1" ?>
<!-- what the display wants -->
<BMR>
    <EVENT>
        <TYPE>1</TYPE>
        <TMASK>0x1F</TMASK>
        <MINTIMESEC>1700000000</MINTIMESEC>
        <MINTIMEUSEC>999999</MINTIMEUSEC>
        <PRIORITY>3</PRIORITY>
        <SBLOCK>RF.SERVER
            <CHLIST>
                <CHAN>A/AMPL</CHAN>
                <CHAN>A/PHASE</CHAN>
            </CHLIST>
        </SBLOCK>
        <SBLOCK>BPM.SERVER</SBLOCK>
    </EVENT>
    <EVENT>
        <TYPE>6</TYPE>
        <SBLOCK>CAMERA</SBLOCK>
        <CHLIST><CHAN>C1</CHAN></CHLIST>
    </EVENT>
    <EVENT><TYPE>32</TYPE></EVENT>
</BMR>
)";
const char ordinary_entries[] =
    "1 mask=31 sec=1700000000 usec=999999 prio=3 RF.SERVER\n            (A/AMPL,A/PHASE) BPM.SERVER(); "
    "6 CAMERA(C1); 32";

} // namespace

TEST(ParseEvList, ReadsAnOrdinaryList) { expect_entries(ordinary_list, ordinary_entries); }

TEST(ParseEvList, ReadsEmptyListsWithoutAWord) {
    for (const char *document :
         {"<BMR/>", "<BMR></BMR>", "<BMR>text</BMR>", "<BMR> <X>1</X> </BMR>", "<BMR><EVENT/></BMR>"})
        expect_entries(document, "");
}

TEST(ParseEvList, AppendsToWhatTheListHeld) {
    for (reader_form form : both_readers) {
        event_list list;
        const zeb5_ev_entry *const first = add_entry(list, 9);
        EXPECT_EQ(read_document(form, bmr("<EVENT><TYPE>1</TYPE></EVENT>"), &list.entries).result, 0);
        EXPECT_EQ(read_document(form, bmr("<TMASK>1</TMASK>"), &list.entries).result,
                  0); // no event of its own
        EXPECT_EQ(describe(list.entries), "9; 1");
        EXPECT_EQ(list.entries[0], first);
    }
}

// Which elements are heeded where

const struct {
    const char *body;
    const char *entries;
} sequences[] = {
    // an event begins with EVENT and never ends
    {"<TYPE>5</TYPE><TMASK>1</TMASK>", ""},
    {"<EVENT/><TYPE>5</TYPE>", "5"},
    {"<EVENT><TYPE>5</TYPE></EVENT><TMASK>1</TMASK>", "5 mask=1"},
    {"<EVENT/><TYPE>5</TYPE><TYPE>6</TYPE>", "5; 6"},
    {"<EVENT>some text<TYPE>5</TYPE></EVENT>", "5"},
    {"<X><EVENT/></X><Y><TYPE>5</TYPE></Y>", "5"},
    // the type is seen at its start tag and taken from a text after that
    {"<EVENT/><TMASK>1</TMASK><TYPE>5</TYPE>", "5"},
    {"<EVENT/><TYPE/><TYPE>5</TYPE>", "5"},
    {"<EVENT/><TYPE></TYPE><TYPE>5</TYPE>", "5"},
    {"<EVENT/><TYPE> \n\t</TYPE><TYPE>5</TYPE>", "5"},
    {"<EVENT/><TYPE><!-- five -->5</TYPE>", "5"},
    {"<EVENT/><TYPE>5<!-- not fifty-six -->6</TYPE>", "5"},
    // each further type makes an entry, and values go to the newest
    {"<EVENT/><TYPE>5</TYPE><TMASK>1</TMASK><TYPE>6</TYPE><TMASK>2</TMASK>", "5 mask=1; 6 mask=2"},
    {"<EVENT/><TYPE>5</TYPE><SBLOCK>A</SBLOCK><TYPE>6</TYPE><SBLOCK>B</SBLOCK>", "5 A(); 6 B()"},
    {"<EVENT/><TYPE>5</TYPE><TYPE>5</TYPE>", "5; 5"},
    // a new event forgets that the type was seen
    {"<EVENT/><TYPE>5</TYPE><EVENT/><TMASK>1</TMASK><SBLOCK>A</SBLOCK>", "5"},
    {"<EVENT/><TYPE/><EVENT/><TYPE>5</TYPE>", "5"},
    // no type at all: what belongs to it is ignored until a good one
    {"<EVENT/><TYPE>33</TYPE><TMASK>1</TMASK><SBLOCK>A</SBLOCK><CHLIST/><CHAN>c</CHAN>", ""},
    {"<EVENT/><TYPE>33</TYPE><TMASK>1</TMASK><TYPE>5</TYPE><PRIORITY>2</PRIORITY>", "5 prio=2"},
    {"<EVENT/><TYPE>5</TYPE><TYPE>33</TYPE><TMASK>1</TMASK>", "5"},
    {"<EVENT/><TYPE>33</TYPE><TYPE>34</TYPE><TYPE>5</TYPE>", "5"},
    // the entry outlasts its event: an empty type goes on with it
    {"<EVENT/><TYPE>5</TYPE><EVENT/><TYPE/><TMASK>1</TMASK><SBLOCK>A</SBLOCK>", "5 mask=1 A()"},
    {"<EVENT/><TYPE>5</TYPE><EVENT/><TYPE>33</TYPE><TYPE/><TMASK>1</TMASK>", "5 mask=1"},
    // values before the first entry are ignored
    {"<EVENT/><TYPE/><TMASK>1</TMASK><MINTIMESEC>1</MINTIMESEC><MINTIMEUSEC>1</MINTIMEUSEC>"
     "<PRIORITY>1</PRIORITY><SBLOCK>A</SBLOCK><CHLIST/><CHAN>c</CHAN>",
     ""},
    {"<EVENT/><TYPE/><SBLOCK>A</SBLOCK><CHLIST/><TYPE>5</TYPE><CHAN>c</CHAN>", "5"},
    {"<EVENT/><TYPE/><SBLOCK>A</SBLOCK><TYPE>5</TYPE><CHLIST/><CHAN>c</CHAN>", "5"},
    // server blocks
    {"<EVENT/><TYPE>5</TYPE><SBLOCK>A</SBLOCK><SBLOCK>A</SBLOCK><SBLOCK>B</SBLOCK>", "5 A() A() B()"},
    {"<EVENT/><TYPE>5</TYPE><SBLOCK/><SBLOCK></SBLOCK><SBLOCK> </SBLOCK>", "5"},
    {"<EVENT/><SBLOCK>A</SBLOCK><TYPE>5</TYPE>", "5"},
    {"<EVENT/><TYPE>5</TYPE><SBLOCK>a b </SBLOCK>", "5 a b ()"},
    // channels need a list, a list needs a server block before it
    {"<EVENT/><TYPE>5</TYPE><CHAN>c</CHAN>", "5"},
    {"<EVENT/><TYPE>5</TYPE><SBLOCK>A</SBLOCK><CHAN>c</CHAN>", "5 A()"},
    {"<EVENT/><TYPE>5</TYPE><CHLIST><CHAN>c</CHAN></CHLIST><SBLOCK>A</SBLOCK><CHAN>d</CHAN>", "5 A()"},
    {"<EVENT/><TYPE>5</TYPE><SBLOCK>A</SBLOCK><CHLIST/><CHAN>c</CHAN><CHAN>c</CHAN>", "5 A(c,c)"},
    {"<EVENT/><TYPE>5</TYPE><SBLOCK>A</SBLOCK><CHLIST>text</CHLIST><CHAN>c</CHAN>", "5 A(c)"},
    {"<EVENT/><TYPE>5</TYPE><SBLOCK>A</SBLOCK><CHLIST/><CHAN/><CHAN> </CHAN>", "5 A()"},
    {"<EVENT/><TYPE>5</TYPE><SBLOCK>A<CHLIST><CHAN>c</CHAN></CHLIST></SBLOCK>", "5 A(c)"},
    {"<EVENT/><TYPE>5</TYPE><SBLOCK>A</SBLOCK><CHLIST/><CHAN>c</CHAN><CHLIST/><CHAN>d</CHAN>", "5 A(c,d)"},
    // a list stays in force until the next server block or event
    {"<EVENT/><TYPE>5</TYPE><SBLOCK>A</SBLOCK><CHLIST/><CHAN>c</CHAN><TMASK>1</TMASK><CHAN>d</CHAN>",
     "5 mask=1 A(c,d)"},
    {"<EVENT/><TYPE>5</TYPE><SBLOCK>A</SBLOCK><CHLIST/><SBLOCK>B</SBLOCK><CHAN>c</CHAN>", "5 A() B()"},
    {"<EVENT/><TYPE>5</TYPE><SBLOCK>A</SBLOCK><CHLIST/><SBLOCK/><CHAN>c</CHAN>", "5 A(c)"},
    {"<EVENT/><TYPE>5</TYPE><SBLOCK>A</SBLOCK><SBLOCK>B</SBLOCK><CHLIST/><CHAN>c</CHAN>", "5 A() B(c)"},
    {"<EVENT/><TYPE>5</TYPE><SBLOCK>A</SBLOCK><CHLIST/><EVENT/><TYPE>6</TYPE><CHAN>c</CHAN>", "5 A(); 6"},
    {"<EVENT/><TYPE>5</TYPE><SBLOCK>A</SBLOCK><EVENT/><TYPE>6</TYPE><CHLIST/><CHAN>c</CHAN>", "5 A(); 6"},
    {"<EVENT/><TYPE>5</TYPE><SBLOCK>A</SBLOCK><EVENT/><TYPE/><CHLIST/><CHAN>c</CHAN>", "5 A()"},
    // a new entry leaves the server block and its list in force, and so does a type that is none
    {"<EVENT/><TYPE>5</TYPE><SBLOCK>A</SBLOCK><CHLIST/><TYPE>6</TYPE><CHAN>c</CHAN>", "5 A(c); 6"},
    {"<EVENT/><TYPE>5</TYPE><SBLOCK>A</SBLOCK><TYPE>6</TYPE><CHLIST/><CHAN>c</CHAN>", "5 A(c); 6"},
    {"<EVENT/><TYPE>5</TYPE><SBLOCK>A</SBLOCK><CHLIST/><TYPE>33</TYPE><CHAN>c</CHAN><TYPE/><CHAN>d</CHAN>",
     "5 A(d)"},
    {"<EVENT/><TYPE>5</TYPE><SBLOCK>A</SBLOCK><TYPE>33</TYPE><CHLIST/><TYPE/><CHAN>c</CHAN>", "5 A()"},
    {"<EVENT/><TYPE>5</TYPE><SBLOCK>A</SBLOCK><TYPE>33</TYPE><TYPE/><CHLIST/><CHAN>c</CHAN>", "5 A(c)"},
    // the last one of several values
    {"<EVENT/><TYPE>5</TYPE><PRIORITY>1</PRIORITY><PRIORITY>2</PRIORITY><PRIORITY/>", "5 prio=2"},
    // names are exact, and other elements mean nothing
    {"<Event/><TYPE>5</TYPE>", ""},
    {"<EVENT/><type>5</type><TYPES>5</TYPES><TYP>5</TYP>", ""},
    {"<EVENT/><TYPE>5</TYPE><tmask>1</tmask><SBLOCKS>A</SBLOCKS><MINTIME>1</MINTIME><X>1</X>", "5"},
    {"<EVENT/><TYPE>5</TYPE><SBLOCK>A</SBLOCK><CHLISTS/><chlist/><CHAN>c</CHAN>", "5 A()"},
    {"<EVENT TYPE='5' x='y'/><TYPE n='1'>5</TYPE><BMR/><BMR>1</BMR>", "5"},
};

TEST(ParseEvList, HeedsElementsByTheFlatSequence) {
    for (const auto &row : sequences)
        expect_entries(bmr(row.body), row.entries);
}

// Values

TEST(ParseEvList, TakesEveryEventTypeAndEvmax) {
    for (int type = 0; type <= 32; ++type)
        expect_entries(bmr("<EVENT>" + element("TYPE", std::to_string(type)) + "</EVENT>"),
                       std::to_string(type));
}

TEST(ParseEvList, ReadsTypesAsDecimalNumbersOf32Bits) {
    const struct {
        const char *text, *entries;
    } rows[] = {
        {"33", ""},
        {"-1", ""},
        {"-32", ""},
        {"1000", ""},
        {"2147483647", ""},
        {"2147483648", ""},
        {"4294967295", ""},
        {"4294967296", "0"},
        {"4294967301", "5"},
        {"4294967328", "32"},
        {"4294967329", ""},
        {"-4294967291", "5"},
        {"99999999999999999999", ""},
        {"-99999999999999999999", "0"},
        {" \n7 ", "7"},
        {"+7", "7"},
        {"007", "7"},
        {"7 and more", "7"},
        {"3.9", "3"},
        {"0x10", "0"},
        {"HB", "0"},
        {"-", "0"},
    };
    for (const auto &row : rows)
        expect_entries(bmr("<EVENT>" + element("TYPE", row.text) + "</EVENT>"), row.entries);
}

TEST(ParseEvList, ReadsNumbersDecimalOrWithASmallXHexadecimal) {
    const xml_platform up;             // starting it for each document would take most of the time
    constexpr std::uint32_t kept = 77; // what the field held before
    const struct {
        const char *text;
        std::uint32_t value;
    } rows[] = {
        {"16", 16},
        {"0x10", 16},
        {"0X10", 0}, // decimal, up to the X
        {"0x1F", 31},
        {"0x1f", 31},
        {" \n0x1F\t", 31},
        {"0xx1F", kept},
        {"0x", kept},
        {"x", kept},
        {"x1F", kept},
        {"1F", 1},
        {"max", kept},
        {"1x2", kept},
        {"12 x", kept},
        {"00x1F", kept},
        {"0 x1F", kept},
        {"0x 1F", 31},
        {"0x0x1F", 31},
        {"0x0X1F", 31},
        {"0x1F x", 31},
        {"0x1Fx", 31},
        {"0xg", kept},
        {"0xFFFFFFFF", 0xFFFFFFFF},
        {"0x1FFFFFFFE", 0xFFFFFFFE},
        {"0xFFFFFFFFFFFFFFFFF", 0xFFFFFFFF},
        {"0x-1", 0xFFFFFFFF},
        {"4294967295", 0xFFFFFFFF},
        {"4294967297", 1},
        {"99999999999999999999", 0xFFFFFFFF},
        {"-1", 0xFFFFFFFF},
        {"-2147483648", 0x80000000},
        {" 5 ", 5},
        {"+5", 5},
        {"007", 7},
        {"12abc", 12},
        {"1e3", 1},
        {"3.9", 3},
        {"abc", kept},
        {"-", kept},
        {"--5", kept},
        {",5", kept},
    };
    const struct {
        const char *tag, *label;
    } fields[] = {{"TMASK", "mask"}, {"MINTIMESEC", "sec"}, {"MINTIMEUSEC", "usec"}, {"PRIORITY", "prio"}};
    for (const auto &field : fields)
        for (const auto &row : rows)
            expect_entries(bmr("<EVENT><TYPE>5</TYPE>" + element(field.tag, std::to_string(kept)) +
                               element(field.tag, row.text) + "</EVENT>"),
                           row.value ? std::string("5 ") + field.label + '=' + std::to_string(row.value)
                                     : "5");
}

namespace {

std::string letters(std::size_t length) {
    std::string text;
    for (std::size_t i = 0; i < length; ++i)
        text += static_cast<char>('a' + i % 26);
    return text;
}

} // namespace

TEST(ParseEvList, CutsServerBlockNamesAt254Bytes) {
    for (unsigned length : {1U, 253U, 254U, 255U, 256U, 257U, 5000U}) {
        const std::string name = letters(length);
        expect_entries(bmr("<EVENT/><TYPE>5</TYPE>" + element("SBLOCK", name)),
                       "5 " + name.substr(0, 254) + "()");
    }
}

TEST(ParseEvList, KeepsChannelNamesWhole) {
    for (unsigned length : {1U, 254U, 255U, 256U, 257U, 100000U}) {
        const std::string name = letters(length);
        expect_entries(bmr("<EVENT/><TYPE>5</TYPE><SBLOCK>A</SBLOCK><CHLIST/>" + element("CHAN", name)),
                       "5 A(" + name + ")");
    }
}

// Failures

namespace {

/// Both readers must fail alike and leave an entry of before alone.
void expect_failure(const std::string &document, int result, const std::string &err,
                    const std::string &entries) {
    for (reader_form form : both_readers) {
        event_list list;
        add_entry(list, 9);
        const read_outcome seen = read_document(form, document, &list.entries);
        EXPECT_EQ(seen.result, result) << reader_name(form) << ": " << document;
        EXPECT_EQ(seen.out, "") << reader_name(form) << ": " << document;
        EXPECT_EQ(seen.err, err) << reader_name(form) << ": " << document;
        EXPECT_EQ(describe(list.entries), "9" + entries) << reader_name(form) << ": " << document;
    }
}

} // namespace

TEST(ParseEvList, RefusesEveryOtherRoot) {
    for (const char *root : {"BMRX", "bmr", "Bmr", "BM", "XBMR", "EVENT", "CHANDESCRIPTIONS", "ENVINDEXDICT"})
        expect_failure(element(root, "<EVENT><TYPE>5</TYPE></EVENT>"), 1,
                       std::string("WRONG root tag: ") + root + " must be 'BMR'\n", "");
}

TEST(ParseEvList, KeepsWhatWasReadBeforeAnError) {
    const std::string events = "<EVENT><TYPE>5</TYPE><TMASK>1</TMASK></EVENT>";
    expect_failure("<BMR>" + events + "<EVENT></BMR>", 1,
                   "\nFatal Error at (file DOCUMENT, line 1, char 60): expected end of tag 'EVENT'\n",
                   "; 5 mask=1");
}

TEST(ParseEvList, AddsTheParsersReportsToItsOwnFailure) {
    // the encoding is warned of before the root is read
    for (reader_form form : both_readers) {
        event_list list;
        const read_outcome seen =
            read_document(form, "<?xml version=\"1.0\" encoding=\"UTF-16\"?>" + bmr("<EVENT/><TYPE>5</TYPE>"),
                          &list.entries);
        EXPECT_EQ(seen.result, 2) << reader_name(form);
        EXPECT_EQ(seen.err.rfind("\nWarning at (file DOCUMENT, line 1, char ", 0), 0U) << seen.err;
        EXPECT_TRUE(list.entries.empty());
    }
}

TEST(ParseEvList, FailsOnADocumentWithoutARoot) {
    for (const char *document : {"", " ", "text", "<!-- none -->", "<?xml version=\"1.0\"?>"})
        for (reader_form form : both_readers) {
            event_list list;
            const read_outcome seen = read_document(form, document, &list.entries);
            EXPECT_GE(seen.result, 2)
                << reader_name(form) << ": " << document; // its own 1 and what was reported
            EXPECT_EQ(seen.err.rfind("\nFatal Error at (file DOCUMENT, ", 0), 0U) << seen.err;
            EXPECT_TRUE(list.entries.empty());
        }
}

TEST(ParseEvList, RefusesANullSourceWithoutAWord) {
    event_list list;
    add_entry(list, 9);
    captured seen = capture([&] {
        EXPECT_EQ(zeb5_parse_ev_list_read(nullptr, &list.entries), 1);
        EXPECT_EQ(zeb5_parse_ev_list_readf(nullptr, &list.entries), 1);
    });
    EXPECT_EQ(seen.out + seen.err, "");
    EXPECT_EQ(describe(list.entries), "9");
}

TEST(ParseEvList, RefusesANullListWithoutAWord) {
    for (const char *document : {ordinary_list, "<OTHER/>", "no document"})
        for (reader_form form : both_readers) {
            const read_outcome seen =
                read_document(form, document, static_cast<std::vector<zeb5_ev_entry *> *>(nullptr));
            EXPECT_EQ(seen.result, 1) << reader_name(form) << ": " << document;
            EXPECT_EQ(seen.out + seen.err, "") << reader_name(form) << ": " << document;
        }
}

TEST(ParseEvList, FailsOnAFileThatIsNotThere) {
    const temporary_folder folder;
    std::string missing = folder / "missing.xml";
    event_list list;
    const captured seen =
        capture([&] { EXPECT_EQ(zeb5_parse_ev_list_readf(missing.data(), &list.entries), 1); });
    EXPECT_EQ(seen.out, "");
    EXPECT_EQ(seen.err.rfind("\nError during parsing memory stream:\nException message is:  \n", 0), 0U)
        << seen.err;
    EXPECT_TRUE(list.entries.empty());
}

TEST(ParseEvList, EveryCutDocumentEndsWithAnErrorAndLosesNothing) {
    const xml_platform up;
    const std::string whole = ordinary_list;
    const std::size_t inside = whole.find("<BMR>") + 1, end = whole.find("</BMR>") + 6;
    std::string so_far;
    for (std::size_t length = inside; length < end; ++length) {
        std::string entries[2];
        for (reader_form form : both_readers) {
            event_list list;
            const read_outcome seen = read_document(form, whole.substr(0, length), &list.entries);
            EXPECT_GT(seen.result, 0) << length;
            EXPECT_NE(seen.err, "") << length;
            entries[form] = describe(list.entries);
        }
        EXPECT_EQ(entries[READ_FILE], entries[READ_MEMORY]) << length;
        EXPECT_GE(entries[READ_MEMORY].size(), so_far.size()) << length; // nothing is rolled back
        so_far = entries[READ_MEMORY];
    }
    EXPECT_EQ(so_far, ordinary_entries);
}
