/// The elements of a DAQvariables document, and what their texts and attributes do to a record.

#include "parse_chan_descr.h"

#include <functional>

#include <gtest/gtest.h>

#include "support/channel_records.h"
#include "support/descr_readers.h"
#include "support/element.h"
#include "xml_platform.h"

namespace {

std::string document(const std::string &body) { return "<DAQvariables>" + body + "</DAQvariables>\n"; }

/// A channel of one kind whose property stands first.
std::string channel(const std::string &kind, const std::string &elements) {
    return element(kind, "<orvin>ORVIN/A</orvin>" + elements);
}

const char *const kinds[] = {"DaqFloat", "DaqBits", "DaqFloatMatrix"};

using change = std::function<void(chan_descr_2010 *)>;

/// Makes one channel of the elements: a new record of property ORVIN/A, changed by `expected`.
void expect_channel(reader_form form, const std::string &kind, const std::string &elements,
                    const change &expected, bool shift = false) {
    channel_list wanted, list;
    expected(wanted.add(make_channel("ORVIN/A")));
    EXPECT_EQ(read_well(form, document(channel(kind, elements)), list, {shift, false}),
              describe(wanted.records))
        << reader_name(form) << ", shift " << shift << ": " << kind << ' ' << excerpt(elements);
}

/// Both readers make the same of it.
void expect_channel(const std::string &kind, const std::string &elements, const change &expected,
                    bool shift = false) {
    for (reader_form form : both_readers)
        expect_channel(form, kind, elements, expected, shift);
}

const change nothing = [](chan_descr_2010 *) {};

TEST(DaqVariablesReader, ReadsADocumentWithoutChannels) {
    for (reader_form form : both_readers) {
        for (const char *text :
             {"<DAQvariables/>", "<DAQvariables></DAQvariables>",
              "<?xml version=\"1.0\"?>\n<DAQvariables>\n<isodate>now</isodate></DAQvariables>"}) {
            channel_list list;
            list.add(make_channel("ORVIN/OLD"));
            const std::string before = describe(list.records);
            EXPECT_EQ(read_well(form, text, list), before);
        }
    }
}

TEST(DaqVariablesReader, ReadsTheThreeKindsOfChannel) {
    const std::string body =
        "\n<DaqFloat>\n\t<orvin>ORVIN/F</orvin>\n\t<daqName>f</daqName>\n\t<evType>6</evType>\n"
        "\t<subSystem>RF</subSystem>\n\t<setPoint>1</setPoint>\n\t<description>a number</description>\n"
        "\t<units>MV</units>\n\t<firstIndex>0</firstIndex>\n\t<lastIndex>99</lastIndex>\n\t<freq>9</freq>\n"
        "\t<DBKey>5</DBKey>\n\t<sbName>s</sbName>\n</DaqFloat>\n"
        "<DaqBits>\n\t<orvin>ORVIN/B</orvin>\n\t<bitTitle bit=\"3\"/>\n</DaqBits>\n"
        "<DaqFloatMatrix>\n\t<orvin>ORVIN/M</orvin>\n\t<description>a "
        "matrix</description>\n\t<units>V</units>\n"
        "\t<dimension id=\"0\">\n\t\t<name>time</name>\n\t\t<description>axis</description>\n"
        "\t\t<units>us</units>\n\t</dimension>\n\t<dimension "
        "id=\"4\">\n\t\t<name>slot</name>\n\t</dimension>\n"
        "</DaqFloatMatrix>\n";
    for (reader_form form : both_readers) {
        channel_list list, wanted;
        chan_descr_2010 *number = wanted.add(make_channel("ORVIN/F", "f"));
        number->ev_type = 6;
        number->set_point = 1;
        number->max_size = 100;
        set_text(number->subsystem, "RF");
        set_text(number->prop_desc, "a number");
        set_text(number->units, "MV");
        add_bit(wanted.add(make_channel("ORVIN/B")), 3);
        chan_descr_2010 *matrix = wanted.add(make_channel("ORVIN/M"));
        set_text(matrix->prop_desc, "a matrix");
        set_text(matrix->units, "V");
        add_dim(matrix, 0, "time", "axis", "us");
        add_dim(matrix, 4, "slot");
        const read_outcome seen = read_document(form, document(body), list);
        EXPECT_EQ(seen.result, 0);
        EXPECT_EQ(seen.err, "");
        EXPECT_EQ(seen.out, form == READ_MEMORY ? "bitTitle is not defined for bit  3 prop:ORVIN/B\n" : "");
        EXPECT_EQ(describe(list.records), describe(wanted.records));
    }
}

// Numbers

TEST(DaqVariablesReader, ReadsDecimalNumbersAndCutsThemTo32Bits) {
    const xml_platform held; // there are many documents
    const struct {
        const char *text;
        int64_t value;
        int64_t size; // one more, where the number is a last index
    } rows[] = {
        {"0", 0, 1},
        {"99", 99, 100},
        {"+7", 7, 8},
        {"-7", -7, -6},
        {"-1", -1, 0},
        {" \t 12 ", 12, 13},
        {"12abc", 12, 13},
        {"3.9", 3, 4},
        {"0x1F", 0, 1},
        {"abc", 0, 1},
        {"- 5", 0, 1},
        {"2147483646", INT32_MAX - 1, INT32_MAX},
        {"2147483647", INT32_MAX, INT32_MIN},
        {"2147483648", INT32_MIN, INT32_MIN + 1},
        {"-2147483649", INT32_MAX, INT32_MIN},
        {"4294967295", -1, 0},
        {"4294967301", 5, 6},
        {"9223372036854775807", -1, 0},
        {"99999999999999999999", -1, 0},
        {"-99999999999999999999", 0, 1},
    };
    for (const char *kind : kinds) {
        for (const auto &row : rows) {
            const auto value = static_cast<int32_t>(row.value);
            expect_channel(kind, element("evType", row.text),
                           [&](chan_descr_2010 *c) { c->ev_type = static_cast<uint32_t>(value); });
            expect_channel(kind, element("setPoint", row.text),
                           [&](chan_descr_2010 *c) { c->set_point = value; });
            expect_channel(kind, element("lastIndex", row.text),
                           [&](chan_descr_2010 *c) { c->max_size = static_cast<int32_t>(row.size); });
        }
    }
}

// Kept: DAQvariables files hold masks whatever their reader is told; in memory the flag decides.
TEST(DaqVariablesReader, ShiftsEventTypesInTheMemoryReaderOnly) {
    const struct {
        const char *number;
        uint32_t mask, plain;
    } rows[] = {
        {"0", 1, 0},
        {"3", 8, 3},
        {"31", 0x80000000, 31},
        {"32", 1, 32},
        {"63", 0x80000000, 63},
        {"64", 1, 64},
        {"-1", 0x80000000, 0xffffffff},
        {"-31", 2, 0xffffffe1},
        {"4294967301", 0x20, 5},
        {"9223372036854775807", 0x80000000, 0xffffffff},
        {"99999999999999999999", 0x80000000, 0xffffffff},
        {"-99999999999999999999", 1, 0},
        {"abc", 1, 0},
    };
    for (const char *kind : kinds) {
        for (const auto &row : rows) {
            const auto stores = [](uint32_t value) {
                return [value](chan_descr_2010 *c) { c->ev_type = value; };
            };
            const std::string text = element("evType", row.number);
            expect_channel(READ_MEMORY, kind, text, stores(row.mask), true);
            expect_channel(READ_FILE, kind, text, stores(row.plain), true);
            expect_channel(kind, text, stores(row.plain), false);
        }
    }
}

TEST(DaqVariablesReader, ShiftsNoOtherNumber) {
    expect_channel(
        "DaqFloatMatrix", "<setPoint>3</setPoint><lastIndex>3</lastIndex><dimension id=\"3\"/>",
        [](chan_descr_2010 *c) {
            c->set_point = 3;
            c->max_size = 4;
            add_dim(c, 3);
        },
        true);
}

// Texts

TEST(DaqVariablesReader, CutsTextsAtTheirFields) {
    const xml_platform held;
    const struct {
        const char *kind, *before, *tag;
        size_t size;
        void (*store)(chan_descr_2010 *, const std::string &);
    } fields[] = {
        {"DaqFloat", "", "daqName", 256,
         [](chan_descr_2010 *c, const std::string &t) { set_text(c->daq_name, t); }},
        {"DaqBits", "", "subSystem", 64,
         [](chan_descr_2010 *c, const std::string &t) { set_text(c->subsystem, t); }},
        {"DaqFloat", "", "description", 256,
         [](chan_descr_2010 *c, const std::string &t) { set_text(c->prop_desc, t); }},
        {"DaqFloat", "", "units", 16,
         [](chan_descr_2010 *c, const std::string &t) { set_text(c->units, t); }},
        {"DaqFloatMatrix", "", "description", 256,
         [](chan_descr_2010 *c, const std::string &t) { set_text(c->prop_desc, t); }},
        {"DaqFloatMatrix", "", "units", 16,
         [](chan_descr_2010 *c, const std::string &t) { set_text(c->units, t); }},
        {"DaqFloatMatrix", "<dimension id=\"1\"/>", "description", 80,
         [](chan_descr_2010 *c, const std::string &t) { add_dim(c, 1, "", t.c_str()); }},
        {"DaqFloatMatrix", "<dimension id=\"1\"/>", "units", 16,
         [](chan_descr_2010 *c, const std::string &t) { add_dim(c, 1, "", "", t.c_str()); }},
        {"DaqFloatMatrix", "<dimension id=\"1\"/>", "name", 64,
         [](chan_descr_2010 *c, const std::string &t) { add_dim(c, 1, t.c_str()); }},
    };
    for (const auto &field : fields) {
        for (size_t length :
             {size_t{1}, field.size - 2, field.size - 1, field.size, field.size + 1, size_t{5000}}) {
            std::string text;
            for (size_t i = 0; i < length; ++i)
                text += static_cast<char>('a' + i % 26);
            expect_channel(field.kind, field.before + element(field.tag, text),
                           [&](chan_descr_2010 *c) { field.store(c, text.substr(0, field.size - 1)); });
        }
    }
}

TEST(DaqVariablesReader, CutsThePropertyAtItsField) {
    for (size_t length : {size_t{1}, size_t{254}, size_t{255}, size_t{256}, size_t{5000}}) {
        const std::string prop(length, 'p');
        channel_list wanted;
        wanted.add(make_channel(prop.substr(0, 255).c_str()));
        for (reader_form form : both_readers) {
            channel_list list;
            EXPECT_EQ(read_well(form, document(element("DaqFloat", element("orvin", prop))), list),
                      describe(wanted.records));
        }
    }
}

TEST(DaqVariablesReader, SkipsElementsWithoutText) {
    for (const char *kind : kinds)
        for (const std::string tag : {"evType", "orvin", "daqName", "subSystem", "setPoint", "description",
                                      "units", "lastIndex", "name"})
            for (const std::string &empty :
                 {'<' + tag + "/>", element(tag, ""), element(tag, " \n"), element(tag, "<!-- 5 -->")})
                expect_channel(kind, "<evType>7</evType><daqName>n</daqName>" + empty,
                               [](chan_descr_2010 *c) {
                                   c->ev_type = 7;
                                   set_text(c->daq_name, "n");
                               });
}

// Kept: text comes in pieces and the last piece within a step is the value.
TEST(DaqVariablesReader, TakesTheLastPieceOfAText) {
    const struct {
        const char *text, *value;
    } rows[] = {{"a&amp;b", "&b"},      {"ab<![CDATA[cd]]>ef", "ab"}, {"<![CDATA[a & b]]>", "a & b"},
                {"ab<!-- c -->", "ab"}, {"<!-- c -->cd", "cd"},       {" &lt;y", nullptr}};
    for (const auto &row : rows)
        expect_channel("DaqFloat", element("daqName", row.text), [&](chan_descr_2010 *c) {
            if (row.value)
                set_text(c->daq_name, row.value);
        });
}

// What is current

TEST(DaqVariablesReader, GivesTextsToTheCurrentDimensionOrTheChannel) {
    const struct {
        const char *kind, *elements;
        change expected;
    } rows[] = {
        {"DaqFloatMatrix", "<name>n</name><description>d</description><units>u</units>",
         [](chan_descr_2010 *c) {
             set_text(c->prop_desc, "d");
             set_text(c->units, "u");
         }},
        {"DaqFloatMatrix",
         "<dimension id=\"1\"/><dimension "
         "id=\"2\"/><name>n</name><description>d</description><units>u</units>",
         [](chan_descr_2010 *c) {
             add_dim(c, 1);
             add_dim(c, 2, "n", "d", "u");
         }},
        {"DaqFloatMatrix", "<dimension id=\"1\"/><daqName>n</daqName><subSystem>s</subSystem>",
         [](chan_descr_2010 *c) {
             add_dim(c, 1);
             set_text(c->daq_name, "n");
             set_text(c->subsystem, "s");
         }},
        // the other kinds know no dimensions and no names, the matrix no bits
        {"DaqFloat", "<dimension id=\"1\"/><dimension/><name>n</name><bitTitle bit=\"1\"/><bitTitle/>",
         nothing},
        {"DaqBits", "<dimension id=\"1\"/><dimension/><name>n</name><units>u</units>",
         [](chan_descr_2010 *c) { set_text(c->units, "u"); }},
        {"DaqFloatMatrix", "<bitTitle bit=\"1\">t</bitTitle><bitTitle/>", nothing},
        // nesting does not matter, unknown and differently spelled elements do not either
        {"DaqFloat", "<x><units>u<y/></units></x><DAQNAME>n</DAQNAME><evtype>1</evtype><PROP>p</PROP>",
         [](chan_descr_2010 *c) { set_text(c->units, "u"); }},
    };
    for (const auto &row : rows)
        expect_channel(row.kind, row.elements, row.expected);
}

TEST(DaqVariablesReader, StartsEachChannelAnew) {
    const std::string first = "<DaqFloatMatrix><orvin>A</orvin><dimension id=\"1\"/></DaqFloatMatrix>";
    for (const char *kind : kinds) {
        const std::string second = element(kind, "<orvin>B</orvin><name>n</name><units>u</units>");
        for (reader_form form : both_readers) {
            channel_list list, wanted;
            add_dim(wanted.add(make_channel("A")), 1);
            set_text(wanted.add(make_channel("B"))->units, "u");
            EXPECT_EQ(read_well(form, document(first + second), list), describe(wanted.records)) << kind;
        }
    }
}

TEST(DaqVariablesReader, KnowsTheKindsByTheirExactNames) {
    for (const char *kind : {"daqFloat", "DaqFloats", "DaqBit", "DAQBITS", "DaqMatrix", "CHANNEL"})
        for (reader_form form : both_readers) {
            channel_list list;
            EXPECT_EQ(read_well(form, document(channel(kind, "<bitTitle/>")), list), "") << kind;
        }
}

// An element that starts and ends without text is delivered twice and starts a channel each time.
TEST(DaqVariablesReader, StartsAChannelAtEveryStepThatDeliversItsElement) {
    const std::string rest = "<orvin>B</orvin><setPoint>3</setPoint>";
    for (const char *start : {"<DaqFloat></DaqFloat>", "<DaqBits/>", "<DaqFloatMatrix>text</DaqFloatMatrix>",
                              "<DaqFloat name=\"x\"><!-- c --></DaqFloat>"}) {
        for (reader_form form : both_readers) {
            channel_list list, wanted;
            wanted.add(make_channel("ORVIN/A"));
            wanted.add(make_channel("B"))->set_point = 3;
            EXPECT_EQ(read_well(form, document(channel("DaqFloat", start + rest)), list),
                      describe(wanted.records));
        }
    }
}

// Elements of the other dialect mean nothing here, and the other way round.
TEST(DaqVariablesReader, DoNotMixWithTheOtherDialect) {
    for (reader_form form : both_readers) {
        channel_list list;
        EXPECT_EQ(read_well(form, document("<CHANNEL><PROP>A</PROP></CHANNEL>"), list), "");
        EXPECT_EQ(read_well(form,
                            "<CHANDESCRIPTIONS><DaqFloat><orvin>A</orvin></DaqFloat></CHANDESCRIPTIONS>",
                            list),
                  "");
    }
}

} // namespace
