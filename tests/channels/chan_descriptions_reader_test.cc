/// The elements of a CHANDESCRIPTIONS document, and what their texts do to a record.

#include "parse_chan_descr.h"

#include <climits>
#include <functional>

#include <gtest/gtest.h>

#include "support/channel_records.h"
#include "support/descr_readers.h"
#include "support/element.h"
#include "xml_platform.h"

namespace {

std::string document(const std::string &body) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<CHANDESCRIPTIONS>" + body + "</CHANDESCRIPTIONS>\n";
}

/// A channel whose elements come before its PROP and therefore before the record enters the list.
std::string channel(const std::string &elements, const char *prop = "ORVIN/A") {
    return "<CHANNEL>" + elements + "<PROP>" + prop + "</PROP></CHANNEL>";
}

using change = std::function<void(chan_descr_2010 *)>;

/// Both readers must make one channel of the elements: a new record of property ORVIN/A, changed by
/// `expected`.
void expect_channel(const std::string &elements, const change &expected, bool shift = false) {
    channel_list wanted;
    expected(wanted.add(make_channel("ORVIN/A")));
    for (reader_form form : both_readers) {
        channel_list list;
        EXPECT_EQ(read_well(form, document(channel(elements)), list, {shift, false}),
                  describe(wanted.records))
            << reader_name(form) << ", shift " << shift << ": " << excerpt(elements);
    }
}

const change nothing = [](chan_descr_2010 *) {};

TEST(ChanDescriptionsReader, ReadsADocumentWithoutChannels) {
    for (reader_form form : both_readers) {
        for (const char *body : {"", " ", "\n<!-- none -->\n", "<isodate>2021-07-01T13:05:09</isodate>"}) {
            channel_list list;
            list.add(make_channel("ORVIN/OLD"));
            const std::string before = describe(list.records);
            EXPECT_EQ(read_well(form, document(body), list), before);
        }
        channel_list list;
        EXPECT_EQ(read_well(form, "<CHANDESCRIPTIONS/>", list), "");
    }
}

TEST(ChanDescriptionsReader, ReadsEveryElement) {
    const std::string body =
        "\n<isodate>2021-07-01T13:05:09</isodate>\n"
        "<CHANNEL>\n\t<EVTYPE>6</EVTYPE>\n\t<STREAM>2</STREAM>\n\t<PROP>ORVIN/A/B</PROP>\n"
        "\t<SB_NAME>server</SB_NAME>\n\t<DTYPE>41</DTYPE>\n\t<DB_KEY>17</DB_KEY>\n"
        "\t<COUNT>3</COUNT>\n\t<SETPOINT>1</SETPOINT>\n\t<NAME>daq/name</NAME>\n"
        "\t<SUBSYSTEM>RF</SUBSYSTEM>\n\t<DESC>what it is</DESC>\n\t<UNITS>MV</UNITS>\n"
        "\t<SIZE>1024</SIZE>\n"
        "\t<BIT>0<BIT_NAME>ON</BIT_NAME></BIT>\n"
        "\t<BIT>5</BIT>\n\t<BIT_NAME>READY</BIT_NAME>\n\t<BIT_DESCR>is ready</BIT_DESCR>\n"
        "\t<DIM>0</DIM>\n\t<DIM_NAME>time</DIM_NAME>\n\t<DIM_DESCR>axis</DIM_DESCR>\n"
        "\t<DIM_UNITS>us</DIM_UNITS>\n"
        "\t<STAT>1</STAT>\n\t<STAT_NAME>mean</STAT_NAME>\n\t<STAT_DESCR>of all</STAT_DESCR>\n"
        "\t<STAT_UNITS>V</STAT_UNITS>\n\t<STAT>2</STAT>\n\t<STAT_NAME>rms</STAT_NAME>\n"
        "\t<DIM>1</DIM>\n\t<DIM_NAME>slot</DIM_NAME>\n"
        "</CHANNEL>\n<CHANNEL><PROP>ORVIN/C</PROP></CHANNEL>\n";
    channel_list wanted;
    chan_descr_2010 *full = wanted.add(make_channel("ORVIN/A/B", "daq/name"));
    full->ev_type = 6;
    full->stream = 2;
    full->dtype = 41;
    full->db_key = 17;
    full->count = 3;
    full->set_point = 1;
    full->max_size = 1024;
    set_text(full->sb_name, "server");
    set_text(full->subsystem, "RF");
    set_text(full->prop_desc, "what it is");
    set_text(full->units, "MV");
    add_bit(full, 0, "ON");
    add_bit(full, 5, "READY", "is ready");
    dim_descr *dim = add_dim(full, 0, "time", "axis", "us");
    add_stat(dim, 1, "mean", "of all", "V");
    add_stat(dim, 2, "rms");
    add_dim(full, 1, "slot");
    wanted.add(make_channel("ORVIN/C"));
    for (reader_form form : both_readers) {
        for (bool delete_duplicated : {false, true}) {
            channel_list list;
            EXPECT_EQ(read_well(form, document(body), list, {false, delete_duplicated}),
                      describe(wanted.records));
        }
    }
}

// Numbers

const struct {
    const char *text;
    int64_t value; // of the text; a field takes its lower 32 bits
} numbers[] = {
    {"0", 0},
    {"42", 42},
    {"007", 7},
    {"+7", 7},
    {"-7", -7},
    {" \t\n 12", 12},
    {"12 ", 12},
    {" -5 bits", -5},
    {"12abc", 12},
    {"3.9", 3},
    {"1e3", 1},
    {"0x1F", 0},
    {"1F", 1},
    {"abc", 0},
    {"-", 0},
    {"--5", 0},
    {"- 5", 0},
    {"+-5", 0},
    {",", 0},
    {"&#13;8", 8},
    {"2147483647", INT32_MAX},
    {"2147483648", INT32_MIN},
    {"-2147483648", INT32_MIN},
    {"-2147483649", INT32_MAX},
    {"4294967295", -1},
    {"4294967296", 0},
    {"4294967301", 5},
    {"-4294967297", -1},
    {"9223372036854775807", -1},
    {"9223372036854775808", -1},
    {"99999999999999999999999999", -1},
    {"-9223372036854775808", 0},
    {"-99999999999999999999999999", 0},
};

TEST(ChanDescriptionsReader, ReadsDecimalNumbersAndCutsThemTo32Bits) {
    const xml_platform held; // there are many documents
    const struct {
        const char *tag;
        void (*store)(chan_descr_2010 *, int32_t);
    } fields[] = {
        {"EVTYPE", [](chan_descr_2010 *c, int32_t value) { c->ev_type = static_cast<uint32_t>(value); }},
        {"DTYPE", [](chan_descr_2010 *c, int32_t value) { c->dtype = static_cast<uint32_t>(value); }},
        {"STREAM", [](chan_descr_2010 *c, int32_t value) { c->stream = value; }},
        {"DB_KEY", [](chan_descr_2010 *c, int32_t value) { c->db_key = value; }},
        {"COUNT", [](chan_descr_2010 *c, int32_t value) { c->count = value; }},
        {"SETPOINT", [](chan_descr_2010 *c, int32_t value) { c->set_point = value; }},
        {"SIZE", [](chan_descr_2010 *c, int32_t value) { c->max_size = value; }},
        {"BIT", [](chan_descr_2010 *c, int32_t value) { add_bit(c, value); }},
        {"DIM", [](chan_descr_2010 *c, int32_t value) { add_dim(c, value); }},
    };
    for (const auto &field : fields)
        for (const auto &number : numbers)
            expect_channel(element(field.tag, number.text),
                           [&](chan_descr_2010 *c) { field.store(c, static_cast<int32_t>(number.value)); });
    for (const auto &number : numbers)
        expect_channel("<DIM>0</DIM>" + element("STAT", number.text), [&](chan_descr_2010 *c) {
            add_stat(add_dim(c, 0), static_cast<int32_t>(number.value));
        });
}

TEST(ChanDescriptionsReader, TurnsTypeNumbersIntoMasksWithShift) {
    const struct {
        const char *number;
        uint32_t ev_type, dtype;
    } rows[] = {
        {"0", 1, 1},
        {"3", 8, 8},
        {"30", 0x40000000, 0x40000000},
        {"31", 0x80000000, 0x80000000},
        {"32", 1, 0x80000001},
        {"33", 2, 0x80000002},
        {"41", 0x200, 0x80000200},
        {"62", 0x40000000, 0xc0000000},
        {"63", 0x80000000, 0}, // Kept: 32 bits wrap around; no block has type 63
        {"64", 1, 0x80000001},
        {"95", 0x80000000, 0},
        {"96", 1, 0x80000001},
        {"1000", 0x100, 0x80000100},
        {"-1", 0x80000000, 0x80000000},
        {"-31", 2, 2},
        {"-32", 1, 1},
        {"-33", 0x80000000, 0x80000000},
        {"abc", 1, 1},
        {"0x9", 1, 1},
        {" 9 ", 0x200, 0x200},
        // compared as the long that was read, not as its lower 32 bits
        {"2147483647", 0x80000000, 0},
        {"2147483648", 1, 0x80000001},
        {"4294967295", 0x80000000, 0},
        {"4294967301", 0x20, 0x80000020},
        {"-2147483648", 1, 1},
        {"-4294967291", 0x20, 0x20},
        {"9223372036854775807", 0x80000000, 0},
        {"99999999999999999999", 0x80000000, 0},
        {"-9223372036854775808", 1, 1},
        {"-99999999999999999999", 1, 1},
    };
    for (const auto &row : rows)
        expect_channel(
            element("EVTYPE", row.number) + element("DTYPE", row.number),
            [&](chan_descr_2010 *c) {
                c->ev_type = row.ev_type;
                c->dtype = row.dtype;
            },
            true);
}

TEST(ChanDescriptionsReader, ShiftsNoOtherNumber) {
    expect_channel(
        "<STREAM>3</STREAM><DB_KEY>3</DB_KEY><COUNT>3</COUNT><SETPOINT>3</SETPOINT><SIZE>3</SIZE><BIT>3</BIT>"
        "<DIM>3</DIM><STAT>3</STAT>",
        [](chan_descr_2010 *c) {
            c->stream = c->db_key = c->count = c->set_point = c->max_size = 3;
            add_bit(c, 3);
            add_stat(add_dim(c, 3), 3);
        },
        true);
}

TEST(ChanDescriptionsReader, LetsTheLastOfSeveralElementsWin) {
    expect_channel(
        "<EVTYPE>1</EVTYPE><STREAM>4</STREAM><NAME>longer than</NAME><EVTYPE>6</EVTYPE><NAME>it</NAME>",
        [](chan_descr_2010 *c) {
            c->ev_type = 6;
            c->stream = 4;
            set_text(c->daq_name, "it");
        });
}

// Texts

/// The elements that hold text, with what must stand before them, and where the text goes.
const struct text_element {
    const char *before;
    const char *tag;
    size_t size;
    void (*store)(chan_descr_2010 *, const std::string &);
} text_elements[] = {
    {"", "SB_NAME", 256, [](chan_descr_2010 *c, const std::string &t) { set_text(c->sb_name, t); }},
    {"", "NAME", 256, [](chan_descr_2010 *c, const std::string &t) { set_text(c->daq_name, t); }},
    {"", "SUBSYSTEM", 64, [](chan_descr_2010 *c, const std::string &t) { set_text(c->subsystem, t); }},
    {"", "DESC", 256, [](chan_descr_2010 *c, const std::string &t) { set_text(c->prop_desc, t); }},
    {"", "UNITS", 16, [](chan_descr_2010 *c, const std::string &t) { set_text(c->units, t); }},
    {"<BIT>1</BIT>", "BIT_NAME", 64,
     [](chan_descr_2010 *c, const std::string &t) { add_bit(c, 1, t.c_str()); }},
    {"<BIT>1</BIT>", "BIT_DESCR", 80,
     [](chan_descr_2010 *c, const std::string &t) { add_bit(c, 1, "", t.c_str()); }},
    {"<DIM>1</DIM>", "DIM_NAME", 64,
     [](chan_descr_2010 *c, const std::string &t) { add_dim(c, 1, t.c_str()); }},
    {"<DIM>1</DIM>", "DIM_DESCR", 80,
     [](chan_descr_2010 *c, const std::string &t) { add_dim(c, 1, "", t.c_str()); }},
    {"<DIM>1</DIM>", "DIM_UNITS", 16,
     [](chan_descr_2010 *c, const std::string &t) { add_dim(c, 1, "", "", t.c_str()); }},
    {"<DIM>1</DIM><STAT>2</STAT>", "STAT_NAME", 64,
     [](chan_descr_2010 *c, const std::string &t) { add_stat(add_dim(c, 1), 2, t.c_str()); }},
    {"<DIM>1</DIM><STAT>2</STAT>", "STAT_DESCR", 80,
     [](chan_descr_2010 *c, const std::string &t) { add_stat(add_dim(c, 1), 2, "", t.c_str()); }},
    {"<DIM>1</DIM><STAT>2</STAT>", "STAT_UNITS", 16,
     [](chan_descr_2010 *c, const std::string &t) { add_stat(add_dim(c, 1), 2, "", "", t.c_str()); }},
    // Kept: without a dimension or a statistic the text describes the channel
    {"", "DIM_DESCR", 256, [](chan_descr_2010 *c, const std::string &t) { set_text(c->prop_desc, t); }},
    {"", "STAT_DESCR", 256, [](chan_descr_2010 *c, const std::string &t) { set_text(c->prop_desc, t); }},
    {"<DIM>1</DIM>", "STAT_DESCR", 256,
     [](chan_descr_2010 *c, const std::string &t) {
         add_dim(c, 1);
         set_text(c->prop_desc, t);
     }},
};

TEST(ChanDescriptionsReader, CutsTextsAtTheirFields) {
    const xml_platform held;
    for (const text_element &field : text_elements) {
        for (size_t length : {size_t{1}, field.size - 2, field.size - 1, field.size, field.size + 1,
                              3 * field.size, size_t{5000}}) {
            std::string text;
            for (size_t i = 0; i < length; ++i)
                text += static_cast<char>('a' + i % 26);
            expect_channel(field.before + element(field.tag, text),
                           [&](chan_descr_2010 *c) { field.store(c, text.substr(0, field.size - 1)); });
        }
    }
}

TEST(ChanDescriptionsReader, CutsThePropertyAtItsField) {
    for (size_t length : {size_t{1}, size_t{254}, size_t{255}, size_t{256}, size_t{257}, size_t{5000}}) {
        const std::string prop(length, 'p');
        channel_list wanted;
        wanted.add(make_channel(prop.substr(0, 255).c_str()));
        for (reader_form form : both_readers) {
            channel_list list;
            EXPECT_EQ(read_well(form, document(channel("", prop.c_str())), list), describe(wanted.records));
        }
    }
}

TEST(ChanDescriptionsReader, CutsBytesNotCharacters) {
    const std::string mu = "\xc2\xb5";
    expect_channel("<UNITS>" + mu + "m</UNITS>", [&](chan_descr_2010 *c) { set_text(c->units, mu + "m"); });
    expect_channel("<UNITS>" + mu + mu + mu + mu + mu + mu + mu + mu + "</UNITS>", [&](chan_descr_2010 *c) {
        set_text(c->units, mu + mu + mu + mu + mu + mu + mu + "\xc2");
    });
}

TEST(ChanDescriptionsReader, KeepsTextsAsTheyStand) {
    for (const char *text : {" padded ", "\n\ttext\n", "a'b\"c", "%s%n%d", "a\tb"})
        expect_channel(element("NAME", text), [&](chan_descr_2010 *c) { set_text(c->daq_name, text); });
}

TEST(ChanDescriptionsReader, SkipsElementsWithoutText) {
    const xml_platform held;
    for (const char *tag : {"EVTYPE",    "STREAM",    "PROP",     "SB_NAME",   "DTYPE",      "DB_KEY",
                            "COUNT",     "SETPOINT",  "NAME",     "SUBSYSTEM", "DESC",       "UNITS",
                            "SIZE",      "BIT",       "BIT_NAME", "BIT_DESCR", "DIM",        "DIM_NAME",
                            "DIM_DESCR", "DIM_UNITS", "STAT",     "STAT_NAME", "STAT_DESCR", "STAT_UNITS"}) {
        const std::string name = tag;
        for (const std::string &empty : {'<' + name + "/>", element(name, ""), element(name, " \n\t "),
                                         element(name, "<!-- 5 -->"), element(name, "\r\n")})
            expect_channel("<NAME>n</NAME><SIZE>9</SIZE>" + empty, [](chan_descr_2010 *c) {
                set_text(c->daq_name, "n");
                c->max_size = 9;
            });
    }
}

// Kept: text comes in pieces and the last piece within a step is the value; the check of a document warns of
// it.
TEST(ChanDescriptionsReader, TakesTheLastPieceOfAText) {
    const struct {
        const char *text, *value;
    } rows[] = {
        {"a&amp;b", "&b"},
        {"a&amp;b&lt;c&#65;d", "Ad"},
        {"&amp;", "&"},
        {"ab<![CDATA[cd]]>ef", "ab"},
        {"<![CDATA[a & <b>]]>", "a & <b>"},
        {"ab<!-- c -->cd", "ab"},
        {"<!-- c -->cd", "cd"},
        {"ab<?pi x?>cd", "ab"},
        {"&#13;", "\r"},
        {"<X>x</X>after", nullptr},
        {"before<X>x</X>", "before"},
        {"<![CDATA[]]>text", nullptr},
        {" &amp;y", nullptr},
    };
    for (const auto &row : rows)
        expect_channel(element("NAME", row.text), [&](chan_descr_2010 *c) {
            if (row.value)
                set_text(c->daq_name, row.value);
        });
    expect_channel("<STREAM>1&#50;</STREAM>", [](chan_descr_2010 *c) { c->stream = 2; });
    // a new piece begins after about a million characters
    expect_channel(element("NAME", std::string(1048000, 'a') + std::string(2000, 'b')),
                   [](chan_descr_2010 *c) { set_text(c->daq_name, std::string(255, 'b')); });
}

TEST(ChanDescriptionsReader, ReadsEntitiesDeclaredInTheDocument) {
    const std::string declarations = "<!DOCTYPE CHANDESCRIPTIONS [<!ELEMENT CHANDESCRIPTIONS ANY>"
                                     "<!ELEMENT CHANNEL ANY><!ELEMENT PROP ANY><!ELEMENT NAME ANY>"
                                     "<!ENTITY e \"ENT\">]>";
    channel_list wanted;
    wanted.add(make_channel("ENT", "ENT"));
    for (reader_form form : both_readers) {
        channel_list list;
        EXPECT_EQ(read_well(form,
                            declarations + "<CHANDESCRIPTIONS><CHANNEL><NAME>one &e; two</NAME>"
                                           "<PROP>&e;</PROP></CHANNEL></CHANDESCRIPTIONS>",
                            list),
                  describe(wanted.records));
    }
}

// What is current

TEST(ChanDescriptionsReader, GivesSubRecordTextsToTheCurrentOnes) {
    const struct {
        const char *elements;
        change expected;
    } rows[] = {
        // without a record of their own
        {"<BIT_NAME>n</BIT_NAME><BIT_DESCR>d</BIT_DESCR>", nothing},
        {"<DIM_NAME>n</DIM_NAME><DIM_UNITS>u</DIM_UNITS>", nothing},
        {"<STAT>3</STAT><STAT_NAME>n</STAT_NAME><STAT_UNITS>u</STAT_UNITS>", nothing},
        {"<DIM>1</DIM><STAT_NAME>n</STAT_NAME><STAT_UNITS>u</STAT_UNITS>",
         [](chan_descr_2010 *c) { add_dim(c, 1); }},
        // the last one of several
        {"<BIT>1</BIT><BIT>2</BIT><BIT_NAME>n</BIT_NAME>",
         [](chan_descr_2010 *c) {
             add_bit(c, 1);
             add_bit(c, 2, "n");
         }},
        {"<BIT>1</BIT><BIT>1</BIT>",
         [](chan_descr_2010 *c) {
             add_bit(c, 1);
             add_bit(c, 1);
         }},
        // a dimension does not end a bit
        {"<BIT>1</BIT><DIM>0</DIM><BIT_NAME>n</BIT_NAME><BIT_DESCR>d</BIT_DESCR>",
         [](chan_descr_2010 *c) {
             add_bit(c, 1, "n", "d");
             add_dim(c, 0);
         }},
        // a bit does not end a dimension or a statistic
        {"<DIM>0</DIM><STAT>1</STAT><BIT>1</BIT><DIM_NAME>n</DIM_NAME><STAT_NAME>s</STAT_NAME>",
         [](chan_descr_2010 *c) {
             add_bit(c, 1);
             add_stat(add_dim(c, 0, "n"), 1, "s");
         }},
        // a dimension ends a statistic
        {"<DIM>0</DIM><STAT>1</STAT><DIM>1</DIM><STAT_NAME>n</STAT_NAME><STAT_UNITS>u</STAT_UNITS>"
         "<STAT_DESCR>d</STAT_DESCR>",
         [](chan_descr_2010 *c) {
             add_stat(add_dim(c, 0), 1);
             add_dim(c, 1);
             set_text(c->prop_desc, "d");
         }},
        // a description of a dimension after one of the channel, and the other way round
        {"<DESC>c</DESC><DIM_DESCR>d</DIM_DESCR><DIM>0</DIM><DIM_DESCR>e</DIM_DESCR>",
         [](chan_descr_2010 *c) {
             set_text(c->prop_desc, "d");
             add_dim(c, 0, "", "e");
         }},
        // nesting does not matter
        {"<BIT_NAME><BIT>4</BIT></BIT_NAME><X><STREAM>5</STREAM></X>",
         [](chan_descr_2010 *c) {
             add_bit(c, 4);
             c->stream = 5;
         }},
        // unknown and differently spelled elements
        {"<stream>5</stream><Name>n</Name><TITLE>t</TITLE><NAME_>n</NAME_><BITNAME>b</BITNAME>", nothing},
    };
    for (const auto &row : rows)
        expect_channel(row.elements, row.expected);
}

TEST(ChanDescriptionsReader, StartsEachChannelAnew) {
    const std::string body = "<CHANNEL><PROP>ORVIN/A</PROP><BIT>1</BIT><DIM>2</DIM><STAT>3</STAT></CHANNEL>"
                             "<CHANNEL><PROP>ORVIN/B</PROP><BIT_NAME>n</BIT_NAME><DIM_NAME>n</DIM_NAME>"
                             "<STAT>4</STAT><STAT_NAME>n</STAT_NAME><DIM>5</DIM></CHANNEL>";
    channel_list wanted;
    add_bit(wanted.add(make_channel("ORVIN/A")), 1);
    add_stat(add_dim(wanted.records[0], 2), 3);
    add_dim(wanted.add(make_channel("ORVIN/B")), 5);
    for (reader_form form : both_readers) {
        channel_list list;
        EXPECT_EQ(read_well(form, document(body), list), describe(wanted.records));
    }
}

} // namespace
