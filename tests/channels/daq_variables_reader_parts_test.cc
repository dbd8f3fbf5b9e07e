/// Bits and dimensions of a DAQvariables document with their attributes, and the merging of its channels.

#include "parse_chan_descr.h"

#include <functional>

#include <gtest/gtest.h>

#include "support/channel_records.h"
#include "support/descr_readers.h"

namespace {

std::string document(const std::string &body) { return "<DAQvariables>" + body + "</DAQvariables>"; }

/// Fills a list with what it holds before or must hold afterwards.
using fill = std::function<void(channel_list &)>;

const fill none = [](channel_list &) {};

/// Result and streams of one reader.
struct expectation {
    int result = 0;
    std::string out, err;
};

void expect_read(reader_form form, const std::string &body, const expectation &expected, const fill &before,
                 const fill &after, read_options options = {}) {
    channel_list list, wanted;
    before(list);
    after(wanted);
    const read_outcome seen = read_document(form, document(body), list, options);
    EXPECT_EQ(seen.result, expected.result) << reader_name(form) << ": " << body;
    EXPECT_EQ(seen.out, expected.out) << reader_name(form) << ": " << body;
    EXPECT_EQ(seen.err, expected.err) << reader_name(form) << ": " << body;
    EXPECT_EQ(describe(list.records), describe(wanted.records)) << reader_name(form) << ": " << body;
}

// Bits and dimensions

std::string untitled(const std::string &bit, const std::string &prop = "ORVIN/A") {
    return "bitTitle is not defined for bit  " + bit + " prop:" + prop + '\n';
}

// Kept: only the memory reader tells of untitled bits.
TEST(DaqVariablesReaderBits, AreMadeAtEveryStepThatDeliversTheirTitle) {
    const struct {
        const char *element;
        std::vector<std::pair<int, const char *>> bits;
    } rows[] = {
        {"<bitTitle bit=\"3\"/>", {{3, ""}}},
        {"<bitTitle bit=\"3\"></bitTitle>", {{3, ""}, {3, ""}}},
        {"<bitTitle bit=\"3\">ON</bitTitle>", {{3, ""}, {3, "ON"}}},
        {"<bitTitle bit=\"3\"> \n</bitTitle>", {{3, ""}}},
        {"<bitTitle bit=\"3\"><!-- c -->ON</bitTitle>", {{3, ""}, {3, ""}, {3, "ON"}}},
        {"<bitTitle bit=\"3\">O<x/>N</bitTitle>", {{3, ""}, {3, "O"}}},
        {"<bitTitle x=\"1\" bit=\"3\" y=\"2\">a&amp;b</bitTitle>", {{3, ""}, {3, "&b"}}},
        {"<bitTitle bit=\"3\">A</bitTitle><bitTitle bit=\"3\">B</bitTitle>",
         {{3, ""}, {3, "A"}, {3, ""}, {3, "B"}}},
        {"<bitTitle bit=\"-7\"/><bitTitle bit=\"+7\"/><bitTitle bit=\" 12 \"/>",
         {{-7, ""}, {7, ""}, {12, ""}}},
        {"<bitTitle bit=\"2147483647\"/><bitTitle bit=\"-2147483648\"/>", {{INT32_MAX, ""}, {INT32_MIN, ""}}},
    };
    for (const auto &row : rows) {
        std::string told;
        for (const auto &[bit, name] : row.bits)
            if (!*name)
                told += untitled(std::to_string(bit));
        for (reader_form form : both_readers)
            expect_read(form, "<DaqBits><orvin>ORVIN/A</orvin>" + std::string(row.element) + "</DaqBits>",
                        {0, form == READ_MEMORY ? told : "", ""}, none, [&](channel_list &list) {
                            chan_descr_2010 *channel = list.add(make_channel("ORVIN/A"));
                            for (const auto &[bit, name] : row.bits)
                                add_bit(channel, bit, name);
                        });
    }
}

const struct {
    const char *text;
    int32_t value;
} attribute_numbers[] = {
    {"", 0},
    {"x", 0},
    {"0x1F", 0},
    {"12abc", 12},
    {"- 5", 0},
    {"4294967301", 5},
    {"4294967295", -1},
    {"99999999999999999999", -1},
    {"-99999999999999999999", 0},
};

TEST(DaqVariablesReaderBits, HaveDecimalNumbersCutTo32Bits) {
    for (const auto &number : attribute_numbers) {
        for (reader_form form : both_readers) {
            channel_list list;
            const read_outcome seen = read_document(form,
                                                    document("<DaqBits><orvin>A</orvin><bitTitle bit=\"" +
                                                             std::string(number.text) + "\"/></DaqBits>"),
                                                    list);
            EXPECT_EQ(seen.result, 0);
            ASSERT_EQ(list.records.size(), 1u);
            ASSERT_EQ(list.records[0]->bits.size(), 1u);
            EXPECT_EQ(list.records[0]->bits[0]->bit, number.value) << '"' << number.text << '"';
        }
    }
}

TEST(DaqVariablesReaderBits, NameThePropertyThatIsKnownSoFar) {
    expect_read(READ_MEMORY,
                "<DaqBits><bitTitle bit=\"1\"/><orvin>ORVIN/A</orvin><bitTitle bit=\"2\"/></DaqBits>",
                {0, untitled("1", "") + untitled("2"), ""}, none, [](channel_list &list) {
                    chan_descr_2010 *channel = list.add(make_channel("ORVIN/A"));
                    add_bit(channel, 1);
                    add_bit(channel, 2);
                });
}

TEST(DaqVariablesReaderBits, CutTheirNamesAtTheField) {
    for (size_t length : {size_t{1}, size_t{62}, size_t{63}, size_t{64}, size_t{65}, size_t{5000}}) {
        const std::string title(length, 't');
        for (reader_form form : both_readers)
            expect_read(
                form, "<DaqBits><orvin>ORVIN/A</orvin><bitTitle bit=\"1\">" + title + "</bitTitle></DaqBits>",
                {0, form == READ_MEMORY ? untitled("1") : "", ""}, none, [&](channel_list &list) {
                    chan_descr_2010 *channel = list.add(make_channel("ORVIN/A"));
                    add_bit(channel, 1);
                    add_bit(channel, 1, title.substr(0, 63).c_str());
                });
    }
}

TEST(DaqVariablesReaderDimensions, AreMadeAtEveryStepThatDeliversTheirElement) {
    const struct {
        const char *elements;
        std::vector<std::pair<int, const char *>> dims;
    } rows[] = {
        {"<dimension id=\"3\"/><name>n</name>", {{3, "n"}}},
        {"<dimension id=\"3\"></dimension><name>n</name>", {{3, ""}, {3, "n"}}},
        {"<dimension id=\"3\">text<name>n</name></dimension>", {{3, ""}, {3, "n"}}},
        {"<dimension id=\"3\"><name>n</name></dimension>", {{3, "n"}}},
        {"<dimension id=\"3\"> <name>n</name></dimension>", {{3, "n"}}},
        {"<dimension id=\"-1\"/><dimension id=\" 4\"/><name>n</name>", {{-1, ""}, {4, "n"}}},
    };
    for (const auto &row : rows)
        for (reader_form form : both_readers)
            expect_read(form,
                        "<DaqFloatMatrix><orvin>ORVIN/A</orvin>" + std::string(row.elements) +
                            "</DaqFloatMatrix>",
                        {}, none, [&](channel_list &list) {
                            chan_descr_2010 *channel = list.add(make_channel("ORVIN/A"));
                            for (const auto &[dim, name] : row.dims)
                                add_dim(channel, dim, name);
                        });
}

TEST(DaqVariablesReaderDimensions, HaveDecimalNumbersCutTo32Bits) {
    for (const auto &number : attribute_numbers)
        for (reader_form form : both_readers)
            expect_read(form,
                        "<DaqFloatMatrix><orvin>A</orvin><dimension id=\"" + std::string(number.text) +
                            "\"/></DaqFloatMatrix>",
                        {}, none,
                        [&](channel_list &list) { add_dim(list.add(make_channel("A")), number.value); });
}

// Missing attributes

// Kept: log scanners tell the two texts for bits apart.
std::string no_bit(reader_form form, const std::string &prop) {
    return (form == READ_MEMORY ? "No attributebit found for bitTitle prop: "
                                : "No attribute: bit found for bitTitle prop: ") +
           prop + '\n';
}

std::string no_id(const std::string &prop) {
    return "No attribute: id found for dimension prop: " + prop + '\n';
}

TEST(DaqVariablesReaderAttributes, AreCountedAndReportedWhenMissing) {
    for (const char *element :
         {"<bitTitle/>", "<bitTitle Bit=\"1\"/>", "<bitTitle number=\"1\" id=\"2\"> </bitTitle>"})
        for (reader_form form : both_readers)
            expect_read(form,
                        "<DaqBits><orvin>A</orvin>" + std::string(element) + "<units>u</units></DaqBits>",
                        {1, "", no_bit(form, "A")}, none,
                        [](channel_list &list) { set_text(list.add(make_channel("A"))->units, "u"); });
    for (const char *element :
         {"<dimension/>", "<dimension ID=\"1\"/>", "<dimension bit=\"1\"> </dimension>"})
        for (reader_form form : both_readers)
            expect_read(form,
                        "<DaqFloatMatrix><orvin>A</orvin>" + std::string(element) +
                            "<units>u</units></DaqFloatMatrix>",
                        {1, "", no_id("A")}, none,
                        [](channel_list &list) { set_text(list.add(make_channel("A"))->units, "u"); });
}

TEST(DaqVariablesReaderAttributes, AreCountedAtEveryStepThatDeliversTheElement) {
    for (reader_form form : both_readers) {
        const std::string bit = no_bit(form, "A"), id = no_id("B");
        expect_read(
            form,
            "<DaqBits><bitTitle/><orvin>A</orvin><bitTitle>t</bitTitle><bitTitle></bitTitle></DaqBits>"
            "<DaqFloatMatrix><orvin>B</orvin><dimension>t</dimension></DaqFloatMatrix>",
            {7, "", no_bit(form, "") + bit + bit + bit + bit + id + id}, none, [](channel_list &list) {
                list.add(make_channel("A"));
                list.add(make_channel("B"));
            });
    }
}

TEST(DaqVariablesReaderAttributes, AddToTheErrorsOfTheParser) {
    for (reader_form form : both_readers)
        expect_read(
            form, "<DaqBits><orvin>A</orvin><bitTitle/><bitTitle/></DaqBit>",
            {3, "",
             no_bit(form, "A") + no_bit(form, "A") +
                 "\nFatal Error at (file DOCUMENT, line 1, char 64): expected end of tag 'DaqBits'\n"},
            none, [](channel_list &list) { list.add(make_channel("A")); });
}

// A dimension without id leaves the one before current.
TEST(DaqVariablesReaderAttributes, LeaveTheCurrentDimensionWhenMissing) {
    for (reader_form form : both_readers)
        expect_read(form,
                    "<DaqFloatMatrix><orvin>A</orvin><dimension "
                    "id=\"1\"/><dimension/><name>n</name></DaqFloatMatrix>",
                    {1, "", no_id("A")}, none,
                    [](channel_list &list) { add_dim(list.add(make_channel("A")), 1, "n"); });
}

TEST(DaqVariablesReaderAttributes, AreNotAskedForOutsideOfAChannel) {
    for (reader_form form : both_readers)
        expect_read(form,
                    "<bitTitle/><dimension/><orvin>B</orvin><DaqBits><orvin>A</orvin></DaqBits>"
                    "<DaqBits><orvin>A</orvin><bitTitle/></DaqBits><bitTitle/>"
                    "<DaqFloatMatrix><orvin>A</orvin><dimension/></DaqFloatMatrix>",
                    {}, none, [](channel_list &list) { list.add(make_channel("A")); });
}

// Identity

chan_descr_2010 *numbered(const char *name, int stream, uint32_t ev_type, uint32_t dtype) {
    chan_descr_2010 *record = make_channel(name);
    record->stream = stream;
    record->ev_type = ev_type;
    record->dtype = dtype;
    return record;
}

// Kept: a file completes the masks of a record, a document in memory fills them only where they are empty;
// both do it whatever delete_duplicated says.
TEST(DaqVariablesReaderIdentity, MergesDuplicatesAsEachReaderDoes) {
    const struct {
        uint32_t old_ev;
        const char *new_ev;
        uint32_t memory_ev, file_ev;
    } rows[] = {
        {0, "0", 0, 0},  {0, "6", 6, 6}, {6, "0", 6, 6},
        {6, "9", 6, 15}, {8, "8", 8, 8}, {1, "-1", 1, 0xffffffff},
    };
    for (const auto &row : rows)
        for (reader_form form : both_readers)
            for (bool delete_duplicated : {false, true})
                expect_read(
                    form,
                    "<DaqFloat><evType>" + std::string(row.new_ev) + "</evType><orvin>A</orvin></DaqFloat>",
                    {}, [&](channel_list &list) { list.add(numbered("A", 5, row.old_ev, 9)); },
                    [&](channel_list &list) {
                        list.add(numbered("A", 5, form == READ_MEMORY ? row.memory_ev : row.file_ev, 9));
                    },
                    {false, delete_duplicated});
}

TEST(DaqVariablesReaderIdentity, MergesNothingElseAndSkipsTheRestOfADuplicate) {
    const std::string body =
        "<DaqBits><evType>4</evType><orvin>A</orvin><bitTitle bit=\"1\"/></DaqBits>"
        "<DaqFloatMatrix><evType>3</evType><daqName>n</daqName><subSystem>s</subSystem><setPoint>1</setPoint>"
        "<description>d</description><units>u</units><lastIndex>9</lastIndex><dimension id=\"1\"/>"
        "<orvin>A</orvin><evType>8</evType><dimension id=\"2\"/><dimension/><orvin>C</orvin></DaqFloatMatrix>"
        "<setPoint>1</setPoint><DaqBits><orvin>A</orvin><bitTitle bit=\"2\"/><bitTitle/></DaqBits>"
        "<DaqFloat><orvin>B</orvin></DaqFloat>";
    for (reader_form form : both_readers)
        expect_read(form, body, {0, form == READ_MEMORY ? untitled("1", "A") : "", ""}, none,
                    [&](channel_list &list) {
                        add_bit(list.add(numbered("A", 0, form == READ_MEMORY ? 4 : 7, 0)), 1);
                        list.add(make_channel("B"));
                    });
}

TEST(DaqVariablesReaderIdentity, MergesIntoTheFirstOfSeveralRecordsOfTheCaller) {
    for (reader_form form : both_readers)
        expect_read(
            form, "<DaqFloat><evType>4</evType><orvin>A</orvin></DaqFloat>", {},
            [](channel_list &list) {
                list.add(numbered("B", 1, 0, 0));
                list.add(numbered("A", 1, 0, 0));
                list.add(numbered("A", 2, 0, 0));
            },
            [](channel_list &list) {
                list.add(numbered("B", 1, 0, 0));
                list.add(numbered("A", 1, 4, 0));
                list.add(numbered("A", 2, 0, 0));
            });
}

TEST(DaqVariablesReaderIdentity, NeverMergesOverlongProperties) {
    const std::string longest(255, 'p'), overlong(256, 'p');
    const auto one = [](const std::string &prop, const char *name) {
        return "<DaqFloat><orvin>" + prop + "</orvin><daqName>" + name + "</daqName></DaqFloat>";
    };
    for (reader_form form : both_readers) {
        expect_read(form, one(overlong, "a") + one(overlong, "b") + one(longest, "c"), {}, none,
                    [&](channel_list &list) {
                        list.add(make_channel(longest.c_str(), "a"));
                        list.add(make_channel(longest.c_str(), "b"));
                    });
    }
}

TEST(DaqVariablesReaderIdentity, NeverListsAChannelWithoutProperty) {
    for (reader_form form : both_readers)
        expect_read(form,
                    "<DaqFloatMatrix><daqName>n</daqName><dimension id=\"1\"/></DaqFloatMatrix>"
                    "<DaqBits><orvin/><orvin> </orvin></DaqBits><DaqFloat><Orvin>A</Orvin></DaqFloat>",
                    {}, none, none);
}

/// Reads, compares, and requires that these places of the list hold these records: equal letters, one record.
void expect_places(const std::string &body, const std::string &places, const fill &before,
                   const fill &after) {
    for (reader_form form : both_readers) {
        channel_list list, wanted;
        before(list);
        after(wanted);
        EXPECT_EQ(read_well(form, document(body), list), describe(wanted.records));
        ASSERT_EQ(list.records.size(), places.size()) << reader_name(form) << ": " << body;
        for (size_t i = 0; i < places.size(); ++i)
            for (size_t k = 0; k < i; ++k)
                EXPECT_EQ(list.records[i] == list.records[k], places[i] == places[k]) << i << ", " << k;
    }
}

TEST(DaqVariablesReaderIdentity, ListsAChannelAgainUnderItsSecondProperty) {
    expect_places("<DaqFloat><orvin>LONGER</orvin><orvin>B</orvin><units>u</units></DaqFloat>", "aa", none,
                  [](channel_list &list) {
                      chan_descr_2010 *record = make_channel("B");
                      set_text(record->units, "u");
                      list.add(record);
                      list.add(record);
                  });
}

// The record that is found is the current one: releasing it would leave the list with a dead pointer.
TEST(DaqVariablesReaderIdentity, KeepsAChannelThatFindsItselfAndSkipsItsRest) {
    expect_places("<DaqFloat><evType>6</evType><orvin>A</orvin><setPoint>1</setPoint><orvin>A</orvin>"
                  "<setPoint>2</setPoint></DaqFloat><DaqFloat><orvin>B</orvin></DaqFloat>",
                  "ab", none, [](channel_list &list) {
                      list.add(numbered("A", 0, 6, 0))->set_point = 1;
                      list.add(make_channel("B"));
                  });
}

TEST(DaqVariablesReaderIdentity, MergesAListedChannelIntoAnotherAndKeepsBoth) {
    expect_places(
        "<DaqFloatMatrix><orvin>B</orvin><dimension id=\"1\"/><evType>6</evType><orvin>A</orvin>"
        "<setPoint>1</setPoint></DaqFloatMatrix>",
        "ab", [](channel_list &list) { list.add(numbered("A", 16, 0, 9)); },
        [](channel_list &list) {
            list.add(numbered("A", 16, 6, 9));
            add_dim(list.add(numbered("B", 0, 6, 0)), 1);
        });
}

} // namespace
