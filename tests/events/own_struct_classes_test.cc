/// A process may classify its event types itself, with values outside of the enumeration: the selector asks
/// that function. This program has one, and links the shared library like any other process.

#include <algorithm>
#include <iterator>
#include <vector>

#include <gtest/gtest.h>

#include "support/capture.h"
#include "support/selector_sources.h"

namespace {

int own_structure[64]; // by event type
std::vector<int> asked;

/// All types of one class.
void classify_all(int structure) {
    for (int &one : own_structure)
        one = structure;
}

} // namespace

int get_event_struct_type(int ev_type) {
    asked.push_back(ev_type);
    return ev_type >= 0 && ev_type < 64 ? own_structure[ev_type] : -1;
}

namespace {

struct class_case {
    int structure;
    bool by_daq_name; // and not by property
    int ml;
};
// Kept: classes 10 to 15 are ML for the question, but found by property.
const class_case class_cases[] = {
    {ZEB5_EV_STRUCT_UNKNOWN, false, 0},
    {ZEB5_EV_STRUCT_LOCAL, true, 0},
    {ZEB5_EV_STRUCT_GLOBAL, false, 0},
    {ZEB5_EV_STRUCT_ML, true, 1},
    {ZEB5_EV_STRUCT_UNDEF, false, 0},
    {5, false, 0},
    {9, false, 0},
    {10, false, 1},
    {11, false, 1},
    {12, false, 1},
    {13, false, 1},
    {14, false, 1},
    {15, false, 1},
    {16, false, 0},
    {-1, false, 0},
    {INT32_MAX, false, 0},
    {INT32_MIN, false, 0},
};

void expect_answers(chan_selector &selector, const class_case &c) {
    EXPECT_EQ(selector.find_channel(7, name("DAQ")), c.by_daq_name) << c.structure;
    EXPECT_EQ(selector.find_channel(7, name("PROP")), !c.by_daq_name) << c.structure;
    EXPECT_EQ(selector.get_event_type(name("DAQ")), 0x82) << c.structure;
    const captured seen = capture([&] {
        EXPECT_EQ(selector.get_event_type(name("PROP")), c.by_daq_name ? 0 : 0x82) << c.structure;
        EXPECT_EQ(selector.is_channel_ml(0), c.ml) << c.structure;
    });
    EXPECT_EQ(seen.out, c.by_daq_name ? "CHANNEL PROP NOT FOUND\n" : "") << c.structure;
}

TEST(OwnStructClasses, DecideTheNameAndTheMlQuestion) {
    for (const class_case &c : class_cases) {
        classify_all(c.structure);
        chan_selector selector;
        add_channels(selector, {{"PROP", "DAQ", 0x82, 0, 0}});
        expect_answers(selector, c);
    }
}

TEST(OwnStructClasses, AreAskedAtEveryQuestion) {
    classify_all(ZEB5_EV_STRUCT_LOCAL);
    chan_selector selector;
    add_channels(selector, {{"PROP", "DAQ", 0x82, 0, 0}});
    for (int round = 0; round < 2; ++round)
        for (const class_case &c : class_cases) {
            classify_all(c.structure);
            expect_answers(selector, c);
        }
}

TEST(OwnStructClasses, CountFromTheNextQuestionForOneName) {
    chan_selector selector;
    add_channels(selector, {{"NAME", "OTHER", 0x82, 0, 0}, {"PROP", "NAME", 0x90, 0, 0}});
    for (int round = 0; round < 3; ++round)
        for (const class_case &c : class_cases) {
            classify_all(c.structure);
            EXPECT_EQ(selector.get_event_type(name("NAME")), c.by_daq_name ? 0x90 : 0x82) << c.structure;
        }
}

TEST(OwnStructClasses, OfOneEventTypeAreEnough) {
    for (int other : {1, 7}) {
        classify_all(ZEB5_EV_STRUCT_LOCAL);
        chan_selector selector;
        add_channels(selector, {{"PROP", "DAQ", 0x82, 0, 0}});
        own_structure[other] = 12;
        EXPECT_EQ(selector.get_event_type(name("PROP")), 0x82) << other;
        EXPECT_EQ(selector.is_channel_ml(0), 1) << other;
        own_structure[other] = ZEB5_EV_STRUCT_LOCAL;
        own_structure[3] = 12; // a type that the channel has not
        EXPECT_EQ(selector.is_channel_ml(0), 0) << other;
    }
}

TEST(OwnStructClasses, OfTypesThatNoMaskHasDoNotCount) {
    classify_all(ZEB5_EV_STRUCT_LOCAL);
    std::fill(own_structure + 32, std::end(own_structure), 12);
    chan_selector selector;
    add_channels(selector, {{"PROP", "DAQ", 1, 0, 0}});
    EXPECT_EQ(capture([&] { EXPECT_EQ(selector.get_event_type(name("PROP")), 0); }).out,
              "CHANNEL PROP NOT FOUND\n");
    EXPECT_EQ(selector.is_channel_ml(0), 0);
    own_structure[0] = 12;
    EXPECT_EQ(selector.get_event_type(name("PROP")), 1);
    EXPECT_EQ(selector.is_channel_ml(0), 1);
}

/// Event types that were asked for meanwhile.
template <class Question> std::vector<int> types_asked(Question question) {
    asked.clear();
    capture(question);
    return asked;
}

TEST(OwnStructClasses, AreAskedForTypesOfAMaskAlone) {
    classify_all(ZEB5_EV_STRUCT_LOCAL);
    chan_selector selector;
    add_channels(selector, {{"PROP", "DAQ", 0x82, 0, 0}, {"NONE", "OTHER", 0, 0, 0}});
    using types = std::vector<int>;
    EXPECT_EQ(types_asked([&] { selector.find_channel(3, name("DAQ")); }), types{});
    EXPECT_EQ(types_asked([&] { selector.find_channel(7, name("DAQ")); }), types{7});
    EXPECT_EQ(types_asked([&] { selector.get_event_type(name("DAQ")); }), types{});
    EXPECT_EQ(types_asked([&] { selector.get_event_type(name("PROP")); }), (types{1, 7}));
    EXPECT_EQ(types_asked([&] { selector.get_event_type(name("NONE")); }), types{});
    EXPECT_EQ(types_asked([&] { selector.get_data_type(name("DAQ")); }), types{});
    EXPECT_EQ(types_asked([&] { selector.is_channel_slow(0); }), types{});
    EXPECT_EQ(types_asked([&] { selector.is_channel_ml(0); }), (types{1, 7}));
}

TEST(OwnStructClasses, AreAskedWithTheEventTypeAsItWasGiven) {
    classify_all(ZEB5_EV_STRUCT_GLOBAL);
    own_structure[39] = ZEB5_EV_STRUCT_ML; // bit 7
    chan_selector selector;
    add_channels(selector, {{"PROP", "DAQ", 0x82, 0, 0}});
    EXPECT_TRUE(selector.find_channel(39, name("DAQ")));
    EXPECT_FALSE(selector.find_channel(39, name("PROP")));
    EXPECT_TRUE(selector.find_channel(7, name("PROP")));
}

} // namespace
