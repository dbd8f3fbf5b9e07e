/// The channel selector: what it gathers from sources, and its answers about channels.

#include "chan_selector.h"

#include <climits>
#include <cstring>

#include <gtest/gtest.h>

#include "support/capture.h"
#include "support/selector_sources.h"

namespace {

constexpr std::uint32_t bit(int type) { return 1u << type; }

const char no_descriptions[] = "get_event_type() No descroption !!!!\n";
const int no_channels[] = {3, -1, INT_MIN, INT_MAX}; // of a list of three

/// What a question answered, and what it printed.
template <class Answer> struct answered {
    Answer answer;
    std::string out;
};

template <class Ask> auto ask(Ask question) {
    answered<decltype(question())> seen{};
    const captured streams = capture([&] { seen.answer = question(); });
    EXPECT_EQ(streams.err, "");
    seen.out = streams.out;
    return seen;
}

template <class Answer, class Ask>
void expect_quietly(Answer expected, Ask question, const std::string &what) {
    const auto seen = ask(question);
    EXPECT_EQ(seen.answer, expected) << what;
    EXPECT_EQ(seen.out, "") << what;
}

// Without descriptions

TEST(ChanSelector, StartsEmptyForFiles) {
    chan_selector selector;
    EXPECT_EQ(selector.size(), 0);
    EXPECT_EQ(selector.get_mode(), EXTR_FROM_FILE);
}

TEST(ChanSelector, LetsEveryChannelPassWhileItIsEmpty) {
    chan_selector selector;
    for (int ev_type : {0, 1, 20, 31, 32, -1, INT_MAX})
        for (char *channel : {name("ANY"), name(""), name(nullptr)})
            expect_quietly(
                true, [&] { return selector.find_channel(ev_type, channel); }, std::to_string(ev_type));
}

TEST(ChanSelector, SaysThatItIsEmpty) {
    chan_selector selector;
    for (char *channel : {name("ANY"), name(nullptr)}) {
        const auto event = ask([&] { return selector.get_event_type(channel); });
        EXPECT_EQ(event.answer, 0);
        EXPECT_EQ(event.out, no_descriptions);
        const auto data = ask([&] { return selector.get_data_type(channel); });
        EXPECT_EQ(data.answer, 0);
        EXPECT_EQ(data.out, no_descriptions); // Kept: the line names the other question
    }
}

TEST(ChanSelector, HasNoChannelNumbersWhileItIsEmpty) {
    chan_selector selector;
    for (int number : {0, 1, -1}) {
        EXPECT_EQ(selector.get_channel(number), nullptr);
        EXPECT_EQ(selector.get_prop(number), nullptr);
        EXPECT_TRUE(selector.set_counter(number, 1));
        expect_quietly(
            -1, [&] { return selector.is_channel_slow(number); }, "slow");
        expect_quietly(
            -1, [&] { return selector.is_channel_ml(number); }, "ml");
        expect_quietly(
            0, [&] { return selector.get_subchannels(number); }, "subchannels");
    }
}

// Reading

TEST(ChanSelector, GathersChannelsAndEventTypesOverCalls) {
    chan_selector selector;
    EXPECT_FALSE(add_channels(selector, {{"P0", "D0", bit(1), 0, 0}}));
    EXPECT_FALSE(selector.find_channel(4, name("P1")));
    EXPECT_FALSE(add_channels(selector, {{"P1", "D1", bit(4), 0, 0}, {"P2", "D2", bit(7), 0, 0}}));
    EXPECT_EQ(selector.size(), 3);
    EXPECT_TRUE(selector.find_channel(1, name("P0")));
    EXPECT_TRUE(selector.find_channel(4, name("P1")));
    EXPECT_TRUE(selector.find_channel(7, name("D2")));
    EXPECT_STREQ(selector.get_channel(2), "D2");
}

TEST(ChanSelector, GivesBackTheFailureAndTheTotalOfTheSources) {
    const std::string good = channel_document({{"P", "D", bit(1), 0, 0}});
    chan_selector selector;
    int total = 99;
    selector_sources last_bad(EXTR_FROM_FILE, {good, ill_formed_document});
    bool failed = false;
    capture([&] { failed = selector.set_descriptions(last_bad, &total); });
    EXPECT_TRUE(failed);
    EXPECT_EQ(total, 99);
    EXPECT_EQ(selector.size(), 2); // what was read stays

    selector_sources first_bad(EXTR_FROM_FILE, {ill_formed_document, good, good});
    capture([&] { failed = selector.set_descriptions(first_bad, &total); });
    EXPECT_FALSE(failed);
    EXPECT_EQ(total, 2);
}

// Kept: a failed call leaves channels without their event types; the next good call takes these in.
TEST(ChanSelector, LearnsEventTypesFromGoodCallsOnly) {
    chan_selector selector;
    selector_sources bad(EXTR_FROM_FILE, {channel_document({{"P", "D", bit(1), 0, 0}}), ill_formed_document});
    capture([&] { selector.set_descriptions(bad, nullptr); });
    EXPECT_FALSE(selector.find_channel(1, name("P")));
    EXPECT_EQ(selector.get_event_type(name("P")), 2);
    std::vector<char *> none;
    EXPECT_FALSE(selector.set_descriptions(&none, nullptr));
    EXPECT_TRUE(selector.find_channel(1, name("P")));
}

TEST(ChanSelector, SurvivesMissingVectorsAndSources) {
    chan_selector selector;
    int total = 99;
    std::vector<char *> null_source = {nullptr};
    EXPECT_TRUE(selector.set_descriptions(nullptr, &total));
    EXPECT_TRUE(selector.set_descriptions(&null_source, &total));
    EXPECT_EQ(total, 99);
    EXPECT_EQ(selector.size(), 0);
}

TEST(ChanSelector, PassesModeAndShiftOn) {
    for (int mode : std::initializer_list<int>{EXTR_FROM_FILE, EXTR_FROM_XML})
        for (bool shift : {false, true}) {
            chan_selector selector;
            selector.change_mode(mode);
            EXPECT_EQ(selector.get_mode(), mode);
            selector.set_shift(shift);
            selector_sources sources(mode, {channel_document({{"P", "D", 4, 41, 0}})});
            EXPECT_FALSE(selector.set_descriptions(sources, nullptr));
            EXPECT_EQ(selector.get_event_type(name("P")), shift ? 16 : 4);
            EXPECT_EQ(static_cast<std::uint32_t>(selector.get_data_type(name("D"))),
                      shift ? 0x80000200u : 41u);
        }
}

TEST(ChanSelector, ReadsNothingInAnyOtherMode) {
    chan_selector selector;
    selector.change_mode(2);
    selector_sources sources(EXTR_FROM_XML, {channel_document({{"P", "D", 4, 41, 0}})});
    int total = 99;
    EXPECT_FALSE(selector.set_descriptions(sources, &total));
    EXPECT_EQ(total, 0);
    EXPECT_EQ(selector.size(), 0);
}

// A channel merged by a later source answers with what it learnt.
TEST(ChanSelector, FollowsWhatALaterSourceAddsToAChannel) {
    chan_selector selector;
    selector.change_mode(EXTR_FROM_XML);
    selector_sources bare(EXTR_FROM_XML, {channel_document({{"P", "", 0, 0, 0}, {"Q", "D", 0, 0, 0}})});
    EXPECT_FALSE(selector.set_descriptions(bare, nullptr));
    EXPECT_EQ(ask([&] { return selector.get_event_type(name("D")); }).out, "CHANNEL D NOT FOUND\n");
    selector_sources typed(EXTR_FROM_XML, {channel_document({{"Q", "", bit(7), 0, 0}})});
    EXPECT_FALSE(selector.set_descriptions(typed, nullptr));
    EXPECT_EQ(selector.size(), 2);
    EXPECT_EQ(selector.get_event_type(name("D")), 0x80);
    EXPECT_TRUE(selector.find_channel(7, name("D")));
}

// By name

struct find_case {
    int ev_type;
    const char *channel;
    bool found;
};
const find_case find_cases[] = {
    {4, "PROP", true},        {4, "DAQ", false},    // global: by property
    {7, "DAQ", true},         {7, "PROP", false},   // local: by DAQ name
    {20, "DAQ", true},        {20, "PROP", false},  // ML: by DAQ name
    {28, "PROP", true},       {28, "DAQ", false},   // undefined: by property
    {4, "EMPTY", true},       {7, "EMPTY.D", true}, // its own mask does not matter
    {4, "prop", false},       {4, "PRO", false},    {4, "PROPS", false},
    {4, "", false},           {7, "", false},       {1, "PROP", false},
    {36, "PROP", true},       {33, "PROP", false}, // bit 4, but an unknown type; bit 1
    {39, "DAQ", false},       {39, "PROP", true},  // bit 7, but an unknown type
    {-28, "PROP", true},      {-25, "PROP", true},  {-25, "DAQ", false},
    {INT_MIN, "PROP", false}, {-4, "PROP", true}, // bits 0 and 28
};

TEST(ChanSelector, FindsChannelsOfKnownEventTypesByTheNameOfTheirClass) {
    chan_selector selector;
    add_channels(selector,
                 {{"PROP", "DAQ", bit(4) | bit(7) | bit(20) | bit(28), 0, 0}, {"EMPTY", "EMPTY.D", 0, 0, 0}});
    for (const find_case &c : find_cases)
        expect_quietly(
            c.found, [&] { return selector.find_channel(c.ev_type, name(c.channel)); },
            std::to_string(c.ev_type) + ' ' + c.channel);
    expect_quietly(
        false, [&] { return selector.find_channel(4, nullptr); }, "null");
}

struct type_case {
    const char *channel;
    std::uint32_t ev_type; // 0: not found
    std::uint32_t dtype;
};
const type_case type_cases[] = {
    {"GLOBAL.D", bit(1), 0x80000200},
    {"GLOBAL.P", bit(1), 0},
    {"LOCAL.D", bit(7) | bit(20), 2},
    {"LOCAL.P", 0, 0}, // local and ML alone are not found by property
    {"MIXED.D", bit(7) | bit(31), 3},
    {"MIXED.P", bit(7) | bit(31), 0},
    {"EMPTY.D", 0, 4}, // no event type, never matched
    {"EMPTY.P", 0, 0},
    {"TWICE.D", bit(8), 5}, // the first of its name that has an event type; data: the first of all
    {"CROSS", bit(9), 9},   // DAQ name of a later, property of an earlier local one
    {"NOBODY", 0, 0},
    {"", 0, 0},
};

TEST(ChanSelector, AnswersTypesByName) {
    chan_selector selector;
    add_channels(selector, {{"GLOBAL.P", "GLOBAL.D", bit(1), 0x80000200, 0},
                            {"LOCAL.P", "LOCAL.D", bit(7) | bit(20), 2, 0},
                            {"MIXED.P", "MIXED.D", bit(7) | bit(31), 3, 0},
                            {"EMPTY.P", "EMPTY.D", 0, 4, 0},
                            {"TWICE.1", "TWICE.D", 0, 5, 0},
                            {"TWICE.2", "TWICE.D", bit(8), 6, 0},
                            {"TWICE.3", "TWICE.D", bit(1), 7, 0},
                            {"CROSS", "CROSS.D", bit(8), 8, 0},
                            {"CROSS.P", "CROSS", bit(9), 9, 0}});
    for (const type_case &c : type_cases) {
        const auto event = ask([&] { return selector.get_event_type(name(c.channel)); });
        EXPECT_EQ(static_cast<std::uint32_t>(event.answer), c.ev_type) << c.channel;
        EXPECT_EQ(event.out,
                  c.ev_type ? std::string() : "CHANNEL " + std::string(c.channel) + " NOT FOUND\n");
        expect_quietly(
            static_cast<int>(c.dtype), [&] { return selector.get_data_type(name(c.channel)); }, c.channel);
    }
    const auto null = ask([&] { return selector.get_event_type(nullptr); });
    EXPECT_EQ(null.answer, 0);
    EXPECT_EQ(null.out, "CHANNEL (null) NOT FOUND\n");
    expect_quietly(
        0, [&] { return selector.get_data_type(nullptr); }, "null");
}

TEST(ChanSelector, PrintsLongUnknownNamesWhole) {
    chan_selector selector;
    add_channels(selector, {{std::string(255, 'p'), std::string(255, 'd'), bit(1), 7, 0}});
    EXPECT_EQ(selector.get_event_type(name(std::string(255, 'p'))), 2);
    EXPECT_EQ(selector.get_data_type(name(std::string(255, 'd'))), 7);
    const std::string unknown(1000, 'p');
    EXPECT_EQ(ask([&] { return selector.get_event_type(name(unknown)); }).out,
              "CHANNEL " + unknown + " NOT FOUND\n");
}

// By number

TEST(ChanSelector, HandsOutTheRecordsOwnNames) {
    chan_selector selector;
    add_channels(selector, {{"P0", "D0", 0, 0, 0}, {"P1", "D1", 0, 0, 0}, {"P2", "D2", 0, 0, 0}});
    EXPECT_STREQ(selector.get_channel(1), "D1");
    EXPECT_STREQ(selector.get_prop(1), "P1");
    EXPECT_EQ(selector.get_channel(1), selector.get_channel(1));
    EXPECT_EQ(selector.get_channel(1) - selector.get_prop(1), 256);
    for (int number : no_channels) {
        EXPECT_EQ(selector.get_channel(number), nullptr) << number;
        EXPECT_EQ(selector.get_prop(number), nullptr) << number;
    }
}

TEST(ChanSelector, SetsCounters) {
    chan_selector selector;
    add_channels(selector, {{"P0", "D0", 0, 0, 0}, {"P1", "D1", 0, 0, 0}, {"P2", "D2", 0, 0, 0}});
    const auto listing = [&] { return capture([&] { selector.dump(); }).out; };
    const std::string before = listing();
    for (int number : no_channels)
        EXPECT_TRUE(selector.set_counter(number, 5)) << number;
    EXPECT_EQ(listing(), before);
    EXPECT_FALSE(selector.set_counter(0, -7));
    EXPECT_FALSE(selector.set_counter(2, INT_MAX));
    std::string expected = before;
    expected.replace(expected.find("count  :0"), 9, "count  :-7");
    expected.replace(expected.rfind("count  :0"), 9, "count  :2147483647");
    EXPECT_EQ(listing(), expected);
}

TEST(ChanSelector, ListsItsDescriptions) {
    chan_selector selector;
    add_channels(selector, {{"P0", "D0", bit(4), bit(6), 0}});
    EXPECT_EQ(capture([&] { selector.dump(); }).out,
              "========================\nZEB5 XML Channel Description (XCD)\n"
              "--------------[0]-----------------\n stream   : 0 \n ev type  : 0x10 ENV\n"
              " data type: 0x40 BLOCK_BPM\n\tcount  :0\n\tdb_key :-1\n\tprop   :P0\n\tname   :D0\n"
              "\tset_pnt:no\n\tdesc   :\n\tsb_name:\n\tsubsys :\n\tunit   :\n\tmax_sz :1\n");
}

struct kind_case {
    const char *daq;
    std::uint32_t ev_type;
    int slow;
    int ml;
    int subchannels; // with two dimensions
};
const kind_case kind_cases[] = {
    {"HB", bit(0), 0, 0, 2},      {"NORMAL", bit(1), 0, 0, 2},
    {"BOR", bit(2), 1, 0, 1},     {"EOR", bit(3), 1, 0, 1},
    {"ENV", bit(4), 1, 0, 1},     {"UPD", bit(5), 1, 0, 1},
    {"IMAGE", bit(6), 0, 0, 2},   {"ENV+NORMAL", bit(1) | bit(4), 1, 0, 1},
    {"LLRF", bit(20), 0, 1, 2},   {"TOROID+UPD", bit(27) | bit(5), 1, 1, 1},
    {"BL1-PG2", 0xFC00, 0, 0, 2}, // event types 10 to 15 are no classes 10 to 15
    {"A.MLB", bit(1), 0, 1, 2},   {".ML", bit(31), 0, 1, 2},
    {"END.ML", bit(4), 1, 1, 1},  {"A.ml", bit(1), 0, 0, 2},
    {"ML", bit(1), 0, 0, 2},      {"ALL", 0xFFFFFFFF, 1, 1, 1},
    {"NONE", 0, -1, -1, 0},       {"NONE.ML", 0, -1, -1, 0},
};

TEST(ChanSelector, KnowsSlowAndMlChannelsAndTheirSubchannels) {
    for (const kind_case &c : kind_cases) {
        chan_selector selector;
        add_channels(selector, {{"P0", "D0", 2, 0, 0}, {"P", c.daq, c.ev_type, 0, 2}, {"P2", "D2", 2, 0, 0}});
        const std::string message = c.ev_type ? "" : "CHANNEL " + std::string(c.daq) + " NOT FOUND\n";
        const auto slow = ask([&] { return selector.is_channel_slow(1); });
        EXPECT_EQ(slow.answer, c.slow) << c.daq;
        EXPECT_EQ(slow.out, message);
        const auto ml = ask([&] { return selector.is_channel_ml(1); });
        EXPECT_EQ(ml.answer, c.ml) << c.daq;
        EXPECT_EQ(ml.out, message);
        const auto subchannels = ask([&] { return selector.get_subchannels(1); });
        EXPECT_EQ(subchannels.answer, c.subchannels) << c.daq;
        EXPECT_EQ(subchannels.out, message);
        for (int number : no_channels) {
            expect_quietly(
                -1, [&] { return selector.is_channel_slow(number); }, c.daq);
            expect_quietly(
                -1, [&] { return selector.is_channel_ml(number); }, c.daq);
            expect_quietly(
                0, [&] { return selector.get_subchannels(number); }, c.daq);
        }
    }
}

TEST(ChanSelector, CountsTheDimensionsOfFastChannels) {
    for (int dims : {0, 1, 5}) {
        chan_selector selector;
        add_channels(selector, {{"P", "D", bit(1), 0, dims}});
        EXPECT_EQ(selector.get_subchannels(0), dims);
    }
}

// Kept: questions by number go by the name of that channel, and so to the first channel of that name.
TEST(ChanSelector, AnswersForTheFirstChannelOfTheSameName) {
    chan_selector selector;
    add_channels(selector, {{"P0", "SAME", 0, 1, 0},
                            {"P1", "SAME", bit(20), 2, 1},
                            {"P2", "SAME", bit(4), 3, 2},
                            {"P3", "P4", bit(1), 4, 3},
                            {"P4", "D4", bit(4), 5, 0}});
    for (int number : {0, 1, 2}) {
        expect_quietly(
            0, [&] { return selector.is_channel_slow(number); }, std::to_string(number));
        expect_quietly(
            1, [&] { return selector.is_channel_ml(number); }, std::to_string(number));
        expect_quietly(
            number, [&] { return selector.get_subchannels(number); }, std::to_string(number));
    }
    EXPECT_EQ(selector.get_event_type(name("SAME")), static_cast<int>(bit(20)));
    EXPECT_EQ(selector.get_data_type(name("SAME")), 1);
    EXPECT_EQ(selector.get_event_type(name("P4")), 2);
}

// A channel that was given two properties is listed twice, under the second.
TEST(ChanSelector, ReleasesAChannelOfTwoIdentitiesOnce) {
    const std::string document = "<CHANDESCRIPTIONS><CHANNEL><EVTYPE>2</EVTYPE><PROP>A</PROP><PROP>B</PROP>"
                                 "<NAME>D</NAME></CHANNEL></CHANDESCRIPTIONS>";
    for (int mode : std::initializer_list<int>{EXTR_FROM_FILE, EXTR_FROM_XML}) {
        chan_selector selector;
        selector.change_mode(mode);
        selector_sources sources(mode, {document});
        EXPECT_FALSE(selector.set_descriptions(sources, nullptr));
        EXPECT_EQ(selector.size(), 2);
        EXPECT_EQ(selector.get_prop(0), selector.get_prop(1));
        EXPECT_EQ(selector.get_event_type(name("B")), 2);
        EXPECT_EQ(ask([&] { return selector.get_event_type(name("A")); }).answer, 0);
    }
}

} // namespace
