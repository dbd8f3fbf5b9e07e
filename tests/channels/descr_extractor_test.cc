/// The description extractor, which reads several sources into one list.

#include "descr_extractor.h"

#include <climits>

#include <gtest/gtest.h>

#include "support/capture.h"
#include "support/channel_records.h"
#include "support/selector_sources.h"

namespace {

const int both_modes[] = {EXTR_FROM_FILE, EXTR_FROM_XML};

const std::string one_channel = channel_document({{"P1", "D1", 1, 0, 0}});
const std::string other_channel = channel_document({{"P2", "D2", 2, 0, 0}});
const std::string third_channel = channel_document({{"P3", "D3", 4, 0, 0}});

/// The properties of a list, in order.
std::string props_of(const channel_list &list) {
    std::string props;
    for (const chan_descr_2010 *channel : list.records)
        props += std::string(channel->prop_name) + ' ';
    return props;
}

struct extraction {
    bool failed = false;
    captured streams;
};

extraction extract(int mode, std::vector<char *> *sources, int *total, std::vector<chan_descr_2010 *> *out,
                   bool shift = false) {
    descr_extractor extractor;
    extractor.set_mode(mode);
    extraction seen;
    seen.streams = capture([&] { seen.failed = extractor.get_descriptions(sources, total, out, shift); });
    return seen;
}

TEST(DescrExtractor, FindsAnEntryInAVector) {
    descr_extractor extractor;
    EXPECT_FALSE(extractor.in_vector({}, 0));
    EXPECT_TRUE(extractor.in_vector({7}, 7));
    EXPECT_TRUE(extractor.in_vector({1, -5, INT_MIN}, INT_MIN));
    EXPECT_TRUE(extractor.in_vector({1, 1}, 1));
    EXPECT_FALSE(extractor.in_vector({1, -5, INT_MIN}, 5));
}

TEST(DescrExtractor, StartsWithFilesAndKeepsAnyModeThatIsSet) {
    descr_extractor extractor;
    EXPECT_EQ(extractor.get_mode(), EXTR_FROM_FILE);
    for (int mode : std::initializer_list<int>{EXTR_FROM_XML, EXTR_FROM_FILE, 2, -1, INT_MAX}) {
        extractor.set_mode(mode);
        EXPECT_EQ(extractor.get_mode(), mode);
    }
}

TEST(DescrExtractor, CountsNothingOfAnEmptyList) {
    for (int mode : std::initializer_list<int>{EXTR_FROM_FILE, EXTR_FROM_XML, 2}) {
        std::vector<char *> none;
        channel_list list;
        int total = 99;
        EXPECT_FALSE(extract(mode, &none, &total, list).failed);
        EXPECT_EQ(total, 0);
        EXPECT_FALSE(extract(mode, &none, nullptr, list).failed);
        EXPECT_EQ(props_of(list), "");
    }
}

struct outcome_case {
    const char *what;
    std::vector<std::string> documents;
    bool failed;
    int total; // was 99
    const char *props;
};
const outcome_case outcome_cases[] = {
    {"one", {one_channel}, false, 1, "P1 "},
    {"all", {one_channel, other_channel, third_channel}, false, 3, "P1 P2 P3 "},
    {"first fails", {ill_formed_document, other_channel, third_channel}, false, 2, "BROKEN P2 P3 "},
    {"middle fails", {one_channel, ill_formed_document, third_channel}, false, 2, "P1 BROKEN P3 "},
    {"all but last fail", {ill_formed_document, "<bad/>", third_channel}, false, 1, "BROKEN P3 "},
    {"last fails", {one_channel, other_channel, ill_formed_document}, true, 99, "P1 P2 BROKEN "},
    {"wrong root last", {one_channel, "<bad/>"}, true, 99, "P1 "},
    {"all fail", {"<bad/>", ""}, true, 99, ""},
};

// Kept: failures before the last source are forgotten, so a client cannot tell them from the result alone.
TEST(DescrExtractor, LetsTheLastSourceDecideAndCountsTheGoodOnes) {
    for (int mode : both_modes)
        for (const outcome_case &c : outcome_cases) {
            selector_sources sources(mode, c.documents);
            channel_list list;
            int total = 99;
            EXPECT_EQ(extract(mode, sources, &total, list).failed, c.failed) << c.what;
            EXPECT_EQ(total, c.total) << c.what;
            EXPECT_EQ(props_of(list), c.props) << c.what;
            channel_list again;
            EXPECT_EQ(extract(mode, sources, nullptr, again).failed, c.failed) << c.what;
        }
}

TEST(DescrExtractor, ReadsNothingInAnyOtherMode) {
    for (int mode : {2, -1, INT_MIN, INT_MAX}) {
        selector_sources sources(EXTR_FROM_XML, {one_channel, ill_formed_document});
        channel_list list;
        int total = 99;
        const extraction seen = extract(mode, sources, &total, list);
        EXPECT_FALSE(seen.failed) << mode;
        EXPECT_EQ(total, 0) << mode;
        EXPECT_EQ(props_of(list), "") << mode;
        EXPECT_EQ(seen.streams.out + seen.streams.err, "") << mode;
    }
}

TEST(DescrExtractor, AppendsToWhatIsThere) {
    for (int mode : both_modes) {
        selector_sources sources(mode, {one_channel});
        channel_list list;
        list.add(make_channel("OLD"));
        EXPECT_FALSE(extract(mode, sources, nullptr, list).failed);
        EXPECT_EQ(props_of(list), "OLD P1 ");
    }
}

TEST(DescrExtractor, PassesShiftOn) {
    for (int mode : both_modes)
        for (bool shift : {false, true}) {
            selector_sources sources(mode, {channel_document({{"P", "D", 4, 41, 0}})});
            channel_list list;
            EXPECT_FALSE(extract(mode, sources, nullptr, list, shift).failed);
            ASSERT_EQ(list.records.size(), 1u);
            EXPECT_EQ(list.records[0]->ev_type, shift ? 0x10u : 4u);
            EXPECT_EQ(list.records[0]->dtype, shift ? 0x80000200u : 41u);
        }
}

TEST(DescrExtractor, MergesDuplicatesFromMemoryAlsoOverSources) {
    const struct {
        int mode;
        const char *props;
    } cases[] = {{EXTR_FROM_XML, "P1 P2 "}, {EXTR_FROM_FILE, "P1 P1 P2 P1 "}};
    for (const auto &c : cases) {
        selector_sources sources(
            c.mode, {channel_document({{"P1", "A", 1, 0, 0}, {"P1", "B", 1, 0, 0}, {"P2", "C", 1, 0, 0}}),
                     one_channel});
        channel_list list;
        EXPECT_FALSE(extract(c.mode, sources, nullptr, list).failed);
        EXPECT_EQ(props_of(list), c.props);
    }
}

TEST(DescrExtractor, SaysNothingOfItsOwn) {
    selector_sources sources(EXTR_FROM_XML, {"<bad/>", one_channel});
    channel_list list;
    const extraction seen = extract(EXTR_FROM_XML, sources, nullptr, list);
    EXPECT_EQ(seen.streams.out, "");
    EXPECT_EQ(seen.streams.err, "WRONG root tag: 'bad' must be 'CHANDESCRIPTIONS or DAQvariables'\n");
}

TEST(DescrExtractor, TakesANullSourceForAFailedOne) {
    for (int mode : both_modes) {
        selector_sources good(mode, {one_channel});
        char *const document = (*static_cast<std::vector<char *> *>(good))[0];
        std::vector<char *> null_first = {nullptr, document};
        std::vector<char *> null_last = {document, nullptr};
        channel_list list;
        int total = 99;
        EXPECT_FALSE(extract(mode, &null_first, &total, list).failed);
        EXPECT_EQ(total, 1);
        total = 99;
        EXPECT_TRUE(extract(mode, &null_last, &total, list).failed);
        EXPECT_EQ(total, 99);
    }
}

TEST(DescrExtractor, FailsWithoutAVectorToReadFromOrInto) {
    for (int mode : both_modes) {
        selector_sources sources(mode, {one_channel});
        channel_list list;
        int total = 99;
        for (const extraction &seen :
             {extract(mode, nullptr, &total, list), extract(mode, sources, &total, nullptr)}) {
            EXPECT_TRUE(seen.failed);
            EXPECT_EQ(seen.streams.out + seen.streams.err, "");
        }
        EXPECT_EQ(total, 99);
        EXPECT_EQ(props_of(list), "");
    }
}

} // namespace
