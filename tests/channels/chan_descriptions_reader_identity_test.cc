/// When a channel of a CHANDESCRIPTIONS document enters the list, and when it is merged instead.

#include "parse_chan_descr.h"

#include <functional>

#include <gtest/gtest.h>

#include "support/channel_records.h"
#include "support/descr_readers.h"

namespace {

std::string document(const std::string &body) { return "<CHANDESCRIPTIONS>" + body + "</CHANDESCRIPTIONS>"; }

std::string prop(const std::string &text) { return "<PROP>" + text + "</PROP>"; }

const read_options merging = {false, true};

/// Fills a list with what it holds before or must hold afterwards.
using fill = std::function<void(channel_list &)>;

void expect_list(reader_form form, const std::string &body, read_options options, const fill &before,
                 const fill &after) {
    channel_list list, wanted;
    before(list);
    after(wanted);
    EXPECT_EQ(read_well(form, document(body), list, options), describe(wanted.records))
        << reader_name(form) << ", delete_duplicated " << options.delete_duplicated << ": " << body;
}

const fill none = [](channel_list &) {};

/// A record as the lists below need it.
chan_descr_2010 *numbered(const char *name, int stream, uint32_t ev_type = 0, uint32_t dtype = 0) {
    chan_descr_2010 *record = make_channel(name);
    record->stream = stream;
    record->ev_type = ev_type;
    record->dtype = dtype;
    return record;
}

TEST(ChanDescriptionsReaderIdentity, NeverListsAChannelWithoutProperty) {
    for (reader_form form : both_readers)
        for (bool delete_duplicated : {false, true})
            expect_list(form,
                        "<CHANNEL><NAME>n</NAME><BIT>1</BIT><DIM>2</DIM><STAT>3</STAT></CHANNEL>"
                        "<CHANNEL><PROP/></CHANNEL><CHANNEL><PROP> </PROP></CHANNEL>"
                        "<CHANNEL><prop>ORVIN/A</prop></CHANNEL><CHANNEL><BIT>1</BIT></CHANNEL>",
                        {false, delete_duplicated}, none, none);
}

TEST(ChanDescriptionsReaderIdentity, IgnoresEverythingBeforeTheFirstChannel) {
    for (reader_form form : both_readers)
        expect_list(form, "<PROP>ORVIN/A</PROP><BIT>1</BIT><STREAM>3</STREAM>", {}, none, none);
}

TEST(ChanDescriptionsReaderIdentity, FillsARecordAfterItsChannelHasEnded) {
    for (reader_form form : both_readers)
        expect_list(form, "<CHANNEL>" + prop("ORVIN/A") + "</CHANNEL><STREAM>3</STREAM><G><BIT>4</BIT></G>",
                    {}, none, [](channel_list &list) { add_bit(list.add(numbered("ORVIN/A", 3)), 4); });
}

// An element that starts and ends without text comes twice, one with a comment behind its start tag as well.
TEST(ChanDescriptionsReaderIdentity, StartsAChannelAtEveryStepThatDeliversItsElement) {
    for (const char *start : {"<CHANNEL></CHANNEL>", "<CHANNEL/>", "<CHANNEL>text</CHANNEL>",
                              "<CHANNEL><!-- c --></CHANNEL>", "<CHANNEL name=\"x\"></CHANNEL>"})
        for (reader_form form : both_readers)
            expect_list(form,
                        "<CHANNEL>" + prop("ORVIN/A") + start + prop("ORVIN/B") +
                            "<STREAM>3</STREAM></CHANNEL>",
                        {}, none, [](channel_list &list) {
                            list.add(numbered("ORVIN/A", 0));
                            list.add(numbered("ORVIN/B", 3));
                        });
}

TEST(ChanDescriptionsReaderIdentity, ListsDuplicatesWithoutDeleteDuplicated) {
    const std::string body = "<CHANNEL><STREAM>1</STREAM>" + prop("ORVIN/A") + "</CHANNEL><CHANNEL>" +
                             prop("ORVIN/A") + "<STREAM>2</STREAM></CHANNEL>";
    for (reader_form form : both_readers)
        expect_list(
            form, body, {}, [](channel_list &list) { list.add(numbered("ORVIN/A", 8)); },
            [](channel_list &list) {
                list.add(numbered("ORVIN/A", 8));
                list.add(numbered("ORVIN/A", 1));
                list.add(numbered("ORVIN/A", 2));
            });
}

// Kept: merging is a matter of the memory reader; master files are read with all their channels.
TEST(ChanDescriptionsReaderIdentity, ListsDuplicatesInTheFileReaderWhateverIsAsked) {
    const std::string body = "<CHANNEL><EVTYPE>1</EVTYPE><STREAM>1</STREAM>" + prop("ORVIN/A") +
                             "</CHANNEL><CHANNEL><EVTYPE>2</EVTYPE><STREAM>2</STREAM>" + prop("ORVIN/A") +
                             "<NAME>second</NAME></CHANNEL>";
    expect_list(READ_FILE, body, merging, none, [](channel_list &list) {
        list.add(numbered("ORVIN/A", 1, 1));
        set_text(list.add(numbered("ORVIN/A", 2, 2))->daq_name, "second");
    });
    expect_list(READ_MEMORY, body, merging, none,
                [](channel_list &list) { list.add(numbered("ORVIN/A", 3, 1)); });
}

TEST(ChanDescriptionsReaderIdentity, MergesMasksWhereTheyAreUnsetAndStreamsBitByBit) {
    const struct {
        uint32_t old_ev, new_ev, ev;
        uint32_t old_dtype, new_dtype, dtype;
        int old_stream, new_stream, stream;
    } rows[] = {
        {0, 0, 0, 0, 0, 0, 0, 0, 0},   {0, 6, 6, 0, 9, 9, 0, 5, 5}, {6, 0, 6, 9, 0, 9, 5, 0, 5},
        {6, 8, 6, 9, 2, 9, 5, 10, 15}, {0, 8, 8, 9, 2, 9, 4, 6, 6}, {6, 8, 6, 0, 2, 2, -2, 1, -1},
    };
    for (const auto &row : rows) {
        const std::string text = "<CHANNEL><EVTYPE>" + std::to_string(row.new_ev) + "</EVTYPE><DTYPE>" +
                                 std::to_string(row.new_dtype) + "</DTYPE><STREAM>" +
                                 std::to_string(row.new_stream) + "</STREAM>" + prop("ORVIN/A") +
                                 "</CHANNEL>";
        const std::string earlier = "<CHANNEL><EVTYPE>" + std::to_string(row.old_ev) + "</EVTYPE><DTYPE>" +
                                    std::to_string(row.old_dtype) + "</DTYPE><STREAM>" +
                                    std::to_string(row.old_stream) + "</STREAM>" + prop("ORVIN/A") +
                                    "</CHANNEL>";
        const fill merged = [&](channel_list &list) {
            list.add(numbered("ORVIN/A", row.stream, row.ev, row.dtype));
        };
        // into a record of the caller, and into one of the same document
        expect_list(
            READ_MEMORY, text, merging,
            [&](channel_list &list) {
                list.add(numbered("ORVIN/A", row.old_stream, row.old_ev, row.old_dtype));
            },
            merged);
        expect_list(READ_MEMORY, earlier + text, merging, none, merged);
    }
}

TEST(ChanDescriptionsReaderIdentity, MergesShiftedMasks) {
    expect_list(
        READ_MEMORY, "<CHANNEL><EVTYPE>3</EVTYPE><DTYPE>41</DTYPE>" + prop("ORVIN/A") + "</CHANNEL>",
        {true, true}, [](channel_list &list) { list.add(numbered("ORVIN/A", 0)); },
        [](channel_list &list) { list.add(numbered("ORVIN/A", 0, 8, 0x80000200)); });
}

TEST(ChanDescriptionsReaderIdentity, MergesNothingElseAndSkipsTheRestOfADuplicate) {
    const std::string body =
        "<CHANNEL><STREAM>1</STREAM><NAME>n</NAME><DESC>d</DESC><UNITS>u</UNITS><SB_NAME>s</SB_NAME>"
        "<SUBSYSTEM>y</SUBSYSTEM><DB_KEY>7</DB_KEY><COUNT>7</COUNT><SETPOINT>7</SETPOINT><SIZE>7</SIZE>"
        "<BIT>7</BIT><DIM>7</DIM><STAT>7</STAT>" +
        prop("ORVIN/A") +
        "<STREAM>2</STREAM><EVTYPE>2</EVTYPE><DTYPE>2</DTYPE><NAME>n</NAME><BIT>8</BIT><BIT_NAME>b</BIT_NAME>"
        "<DIM>8</DIM>" +
        prop("ORVIN/C") + "</CHANNEL><STREAM>4</STREAM><CHANNEL>" + prop("ORVIN/B") +
        "<STREAM>8</STREAM></CHANNEL>";
    expect_list(
        READ_MEMORY, body, merging,
        [](channel_list &list) { add_bit(list.add(numbered("ORVIN/A", 16)), 3, "b", "d"); },
        [](channel_list &list) {
            add_bit(list.add(numbered("ORVIN/A", 17)), 3, "b", "d");
            list.add(numbered("ORVIN/B", 8));
        });
}

TEST(ChanDescriptionsReaderIdentity, MergesIntoTheFirstOfSeveralRecords) {
    expect_list(
        READ_MEMORY, "<CHANNEL><STREAM>4</STREAM>" + prop("ORVIN/A") + "</CHANNEL>", merging,
        [](channel_list &list) {
            list.add(numbered("ORVIN/B", 1));
            list.add(numbered("ORVIN/A", 1));
            list.add(numbered("ORVIN/A", 2));
        },
        [](channel_list &list) {
            list.add(numbered("ORVIN/B", 1));
            list.add(numbered("ORVIN/A", 5));
            list.add(numbered("ORVIN/A", 2));
        });
}

TEST(ChanDescriptionsReaderIdentity, PassesOverPlacesOfTheListWithoutARecord) {
    const std::string daq = "<DAQvariables><DaqFloat><orvin>ORVIN/A</orvin></DaqFloat></DAQvariables>";
    for (const std::string &text : {document("<CHANNEL>" + prop("ORVIN/A") + "</CHANNEL>"), daq})
        for (reader_form form : both_readers) {
            channel_list list;
            list.records = {nullptr, numbered("ORVIN/B", 1), nullptr};
            EXPECT_EQ(read_document(form, text, &list.records, merging).result, 0) << text;
            ASSERT_EQ(list.records.size(), 4u) << text;
            EXPECT_EQ(find_chan_entry(&list.records, "ORVIN/A"), list.records[3]) << text;
        }
}

TEST(ChanDescriptionsReaderIdentity, MergesOnlyExactlyEqualProperties) {
    const std::string longest(255, 'p');
    const struct {
        std::string first, second;
        bool merged;
    } rows[] = {
        {"ORVIN/A", "ORVIN/A", true},
        {"ORVIN/A", "orvin/a", false},
        {"ORVIN/A", " ORVIN/A", false},
        {"ORVIN/A", "ORVIN/A ", false},
        {"ORVIN/A", "ORVIN/AB", false},
        {longest, longest, true},
        // the whole text is compared with what was stored: one that is too long never meets its equal
        {longest + 'p', longest + 'p', false},
        {longest + 'p', longest, true},
        {longest, longest + 'p', false},
    };
    for (const auto &row : rows)
        expect_list(READ_MEMORY,
                    "<CHANNEL><STREAM>1</STREAM>" + prop(row.first) +
                        "</CHANNEL><CHANNEL><STREAM>2</STREAM>" + prop(row.second) + "</CHANNEL>",
                    merging, none, [&](channel_list &list) {
                        list.add(numbered(row.first.c_str(), row.merged ? 3 : 1));
                        if (!row.merged)
                            list.add(numbered(row.second.c_str(), 2));
                    });
}

// Several identities of one channel

/// Reads and requires that these places of the list hold these records: equal letters, one record.
void expect_places(reader_form form, const std::string &body, read_options options, const fill &before,
                   const std::string &places, const fill &after) {
    channel_list list, wanted;
    before(list);
    after(wanted);
    EXPECT_EQ(read_well(form, document(body), list, options), describe(wanted.records))
        << reader_name(form) << ": " << body;
    ASSERT_EQ(list.records.size(), places.size());
    for (size_t i = 0; i < places.size(); ++i)
        for (size_t k = 0; k < i; ++k)
            EXPECT_EQ(list.records[i] == list.records[k], places[i] == places[k]) << i << ", " << k;
}

/// Makes one record stand in the list twice.
void add_twice(channel_list &list, chan_descr_2010 *record) {
    list.add(record);
    list.add(record);
}

TEST(ChanDescriptionsReaderIdentity, ListsAChannelAgainUnderItsSecondProperty) {
    const std::string body =
        "<CHANNEL><STREAM>1</STREAM>" + prop("ORVIN/A") + prop("ORVIN/B") + "<STREAM>2</STREAM></CHANNEL>";
    for (reader_form form : both_readers)
        for (bool delete_duplicated : {false, true})
            expect_places(form, body, {false, delete_duplicated}, none, "aa",
                          [](channel_list &list) { add_twice(list, numbered("ORVIN/B", 2)); });
}

TEST(ChanDescriptionsReaderIdentity, KeepsNothingOfALongerFirstProperty) {
    const std::string body = "<CHANNEL>" + prop("ORVIN/LONGER") + prop("ORVIN") + "</CHANNEL>";
    for (reader_form form : both_readers)
        expect_places(form, body, {}, none, "aa",
                      [](channel_list &list) { add_twice(list, numbered("ORVIN", 0)); });
}

TEST(ChanDescriptionsReaderIdentity, ListsAChannelAgainUnderTheSamePropertyWithoutMerging) {
    const std::string body = "<CHANNEL>" + prop("ORVIN/A") + prop("ORVIN/A") + "<STREAM>2</STREAM></CHANNEL>";
    const fill twice = [](channel_list &list) { add_twice(list, numbered("ORVIN/A", 2)); };
    expect_places(READ_MEMORY, body, {}, none, "aa", twice);
    expect_places(READ_FILE, body, {}, none, "aa", twice);
    expect_places(READ_FILE, body, merging, none, "aa", twice);
}

// The record that is found is the current one: releasing it would leave the list with a dead pointer.
TEST(ChanDescriptionsReaderIdentity, KeepsAChannelThatFindsItselfAndSkipsItsRest) {
    const std::string body = "<CHANNEL><EVTYPE>6</EVTYPE><STREAM>1</STREAM><BIT>4</BIT>" + prop("ORVIN/A") +
                             "<STREAM>3</STREAM>" + prop("ORVIN/A") +
                             "<STREAM>2</STREAM><BIT_NAME>n</BIT_NAME></CHANNEL><CHANNEL>" + prop("ORVIN/B") +
                             "</CHANNEL>";
    expect_places(READ_MEMORY, body, merging, none, "ab", [](channel_list &list) {
        add_bit(list.add(numbered("ORVIN/A", 3, 6)), 4);
        list.add(numbered("ORVIN/B", 0));
    });
}

TEST(ChanDescriptionsReaderIdentity, MergesAListedChannelIntoAnotherAndKeepsBoth) {
    const std::string body = "<CHANNEL><EVTYPE>6</EVTYPE><STREAM>1</STREAM><BIT>4</BIT>" + prop("ORVIN/B") +
                             "<STREAM>3</STREAM><DTYPE>9</DTYPE>" + prop("ORVIN/A") +
                             "<STREAM>8</STREAM></CHANNEL>";
    expect_places(
        READ_MEMORY, body, merging, [](channel_list &list) { list.add(numbered("ORVIN/A", 16)); }, "ab",
        [](channel_list &list) {
            list.add(numbered("ORVIN/A", 19, 6, 9));
            add_bit(list.add(numbered("ORVIN/B", 3, 6, 9)), 4);
        });
}

TEST(ChanDescriptionsReaderIdentity, FindsTheThirdPropertyOfAChannelInItself) {
    const std::string body = "<CHANNEL>" + prop("ORVIN/A") + prop("ORVIN/B") + prop("ORVIN/B") +
                             "<STREAM>2</STREAM></CHANNEL><CHANNEL><STREAM>4</STREAM>" + prop("ORVIN/A") +
                             "</CHANNEL>";
    expect_places(READ_MEMORY, body, merging, none, "aab", [](channel_list &list) {
        add_twice(list, numbered("ORVIN/B", 0));
        list.add(numbered("ORVIN/A", 4));
    });
}

// Cut names, and names that a channel had before it was renamed, must not be found for other records.
TEST(ChanDescriptionsReaderIdentity, LooksUpTheNamesThatRecordsHaveAtThatMoment) {
    const std::string longest(255, 'p'), overlong(256, 'p');
    const auto one = [](int stream, const std::string &props) {
        return "<CHANNEL><STREAM>" + std::to_string(stream) + "</STREAM>" + props + "</CHANNEL>";
    };
    // a second record with the cut name is renamed: the first one keeps it
    expect_places(
        READ_MEMORY, one(1, prop(overlong) + prop("ORVIN/B")) + one(4, prop(longest)), merging,
        [&](channel_list &list) { list.add(numbered(longest.c_str(), 16)); }, "abb",
        [&](channel_list &list) {
            list.add(numbered(longest.c_str(), 20));
            add_twice(list, numbered("ORVIN/B", 1));
        });
    // the only record with the cut name is renamed: nobody has it
    expect_places(READ_MEMORY, one(1, prop(overlong) + prop("ORVIN/B")) + one(4, prop(longest)), merging,
                  none, "aab", [&](channel_list &list) {
                      add_twice(list, numbered("ORVIN/B", 1));
                      list.add(numbered(longest.c_str(), 4));
                  });
    // the cut name of the channel itself is found under its exact text
    expect_places(READ_MEMORY, one(1, prop(overlong) + prop(longest)) + one(4, prop("ORVIN/B")), merging,
                  none, "ab", [&](channel_list &list) {
                      list.add(numbered(longest.c_str(), 1));
                      list.add(numbered("ORVIN/B", 4));
                  });
    // renamed and back again, as far as its own name is concerned
    expect_places(READ_MEMORY,
                  one(1, prop("ORVIN/A") + prop("ORVIN/B") + prop("ORVIN/A") + "<COUNT>1</COUNT>") +
                      one(4, prop("ORVIN/A")) + one(8, prop("ORVIN/B")),
                  merging, none, "aaab", [](channel_list &list) {
                      chan_descr_2010 *renamed = list.add(numbered("ORVIN/A", 5));
                      renamed->count = 1;
                      add_twice(list, renamed);
                      list.add(numbered("ORVIN/B", 8));
                  });
}

} // namespace
