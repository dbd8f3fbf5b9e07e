/// The merge of the dimensions of channel records, with extend_channel_description().

#include "parse_chan_descr.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "support/capture.h"
#include "support/channel_records.h"

namespace {

/// A dimension and the ids of its statistics, as a row of a table.
struct dim_row {
    int dim;
    std::vector<int> stats;
};

void add_dims(chan_descr_2010 *channel, const std::vector<dim_row> &dims, const char *origin) {
    for (const dim_row &row : dims) {
        dim_descr *dim = add_dim(channel, row.dim, origin, origin, origin);
        for (int stat : row.stats)
            add_stat(dim, stat, origin, origin, origin);
    }
}

/// "2: 0iii(1: 5iii) 1fff(0:)": counts, numbers, and a letter for the origin of each of the texts.
std::string dims_of(const chan_descr_2010 &channel) {
    std::string text = std::to_string(channel.ndims) + ':';
    for (const dim_descr *dim : channel.dims) {
        text += ' ' + std::to_string(dim->dim) + dim->dim_name + dim->dim_desc + dim->units + '(' +
                std::to_string(dim->nstats) + ':';
        for (const stat_descr *stat : dim->stats)
            text += ' ' + std::to_string(stat->stat) + stat->stat_name + stat->stat_desc + stat->units;
        text += ')';
    }
    return text;
}

struct merge_outcome {
    std::string dims;
    std::string out;
};

merge_outcome merge(chan_descr_2010 *in, chan_descr_2010 *from, bool force) {
    const std::string before = describe(*from);
    bool refused = true;
    const captured seen = capture([&] { refused = extend_channel_description(in, from, force); });
    EXPECT_FALSE(refused);
    EXPECT_EQ(seen.err, "");
    EXPECT_EQ(describe(*from), before) << "the source was changed";
    for (const dim_descr *dim : in->dims)
        EXPECT_EQ(std::count(from->dims.begin(), from->dims.end(), dim), 0) << "a shared dimension";
    return {dims_of(*in), seen.out};
}

TEST(ChanDescrMergeDims, AddsWhatIsMissingOrReplacesAll) {
    const struct {
        std::vector<dim_row> in, from;
        const char *filled, *forced;
    } rows[] = {
        {{}, {}, "0:", "0:"},
        {{{0, {1}}}, {}, "1: 0iii(1: 1iii)", "1: 0iii(1: 1iii)"},
        {{}, {{1, {7, 8}}, {0, {}}}, "2: 1fff(2: 7fff 8fff) 0fff(0:)", "2: 1fff(2: 7fff 8fff) 0fff(0:)"},
        // without statistics of its own a dimension takes those of the source, texts stay
        {{{0, {}}}, {{0, {7, 8}}}, "1: 0iii(2: 7fff 8fff)", "1: 0fff(2: 7fff 8fff)"},
        {{{0, {}}},
         {{0, {7, 8}}, {1, {9}}},
         "2: 0iii(2: 7fff 8fff) 1fff(1: 9fff)",
         "2: 0fff(2: 7fff 8fff) 1fff(1: 9fff)"},
        // with statistics of its own it keeps them whole
        {{{0, {1}}}, {{0, {1, 2}}}, "1: 0iii(1: 1iii)", "1: 0fff(2: 1fff 2fff)"},
        {{{0, {1}}}, {{0, {}}}, "1: 0iii(1: 1iii)", "1: 0fff(0:)"},
        {{{0, {}}}, {{0, {}}}, "1: 0iii(0:)", "1: 0fff(0:)"},
        {{{0, {1}}, {2, {}}}, {{1, {5}}}, "3: 0iii(1: 1iii) 2iii(0:) 1fff(1: 5fff)", "1: 1fff(1: 5fff)"},
        // of several with one number the first is looked at
        {{{0, {}}, {0, {}}}, {{0, {7}}}, "2: 0iii(1: 7fff) 0iii(0:)", "1: 0fff(1: 7fff)"},
        // twice in the source: into an empty record both go
        {{}, {{4, {7}}, {4, {8}}}, "2: 4fff(1: 7fff) 4fff(1: 8fff)", "2: 4fff(1: 7fff) 4fff(1: 8fff)"},
        // beside others the second meets the copy of the first
        {{{0, {}}}, {{4, {7}}, {4, {8}}}, "2: 0iii(0:) 4fff(1: 7fff)", "2: 4fff(1: 7fff) 4fff(1: 8fff)"},
        {{{0, {}}}, {{4, {}}, {4, {8}}}, "2: 0iii(0:) 4fff(1: 8fff)", "2: 4fff(0:) 4fff(1: 8fff)"},
        {{{0, {}}}, {{0, {7}}, {0, {8}}}, "1: 0iii(1: 7fff)", "2: 0fff(1: 7fff) 0fff(1: 8fff)"},
        {{{-1, {}}}, {{-1, {-2}}}, "1: -1iii(1: -2fff)", "1: -1fff(1: -2fff)"},
    };
    for (const auto &row : rows) {
        for (bool force : {false, true}) {
            channel_list list;
            chan_descr_2010 *in = list.add(make_channel("ORVIN/A")),
                            *from = list.add(make_channel("ORVIN/A"));
            add_dims(in, row.in, "i");
            add_dims(from, row.from, "f");
            const merge_outcome seen = merge(in, from, force);
            EXPECT_EQ(seen.dims, force ? row.forced : row.filled) << "force " << force;
            EXPECT_EQ(seen.out, "");
        }
    }
}

TEST(ChanDescrMergeDims, DecidesByTheCountsAndWalksTheVectors) {
    const struct {
        std::vector<dim_row> in;
        int in_count;
        std::vector<dim_row> from;
        int from_count;
        const char *filled, *forced;
    } rows[] = {
        // what a count of 0 hides stays, the clones follow
        {{{0, {1}}}, 0, {{0, {7}}}, 1, "1: 0iii(1: 1iii) 0fff(1: 7fff)", "1: 0iii(1: 1iii) 0fff(1: 7fff)"},
        {{{0, {1}}}, 1, {{1, {7}}}, 0, "1: 0iii(1: 1iii)", "1: 0iii(1: 1iii)"},
        {{}, 3, {{1, {7}}}, 1, "4: 1fff(1: 7fff)", "1: 1fff(1: 7fff)"},
        {{{0, {}}}, 9, {{0, {7}}, {1, {}}}, 5, "10: 0iii(1: 7fff) 1fff(0:)", "2: 0fff(1: 7fff) 1fff(0:)"},
        {{{0, {1}}}, 1, {}, 2, "1: 0iii(1: 1iii)", "0:"},
    };
    for (const auto &row : rows) {
        for (bool force : {false, true}) {
            channel_list list;
            chan_descr_2010 *in = list.add(make_channel("ORVIN/A")),
                            *from = list.add(make_channel("ORVIN/A"));
            add_dims(in, row.in, "i");
            add_dims(from, row.from, "f");
            in->ndims = row.in_count;
            from->ndims = row.from_count;
            const merge_outcome seen = merge(in, from, force);
            EXPECT_EQ(seen.dims, force ? row.forced : row.filled) << "force " << force;
            EXPECT_EQ(seen.out, "");
            for (chan_descr_2010 *channel : {in, from})
                channel->ndims = static_cast<int>(channel->dims.size()); // so that all are released
        }
    }
}

TEST(ChanDescrMergeDims, FillsStatisticsByTheCountsToo) {
    const struct {
        int in_count, from_count; // of dimension 0, which holds statistic 1 and statistics 7, 8
        const char *filled;
    } rows[] = {
        {0, 2, "1: 0iii(2: 1iii 7fff 8fff)"}, // hidden ones stay in front
        {0, 9, "1: 0iii(2: 1iii 7fff 8fff)"},
        {0, 0, "1: 0iii(0: 1iii)"},
        {-1, 2, "1: 0iii(-1: 1iii)"},
    };
    for (const auto &row : rows) {
        channel_list list;
        chan_descr_2010 *in = list.add(make_channel("ORVIN/A")), *from = list.add(make_channel("ORVIN/A"));
        add_dims(in, {{0, {1}}}, "i");
        add_dims(from, {{0, {7, 8}}}, "f");
        in->dims[0]->nstats = row.in_count;
        from->dims[0]->nstats = row.from_count;
        const merge_outcome seen = merge(in, from, false);
        EXPECT_EQ(seen.dims, row.filled) << row.in_count << ", " << row.from_count;
        EXPECT_EQ(seen.out, "");
        in->dims[0]->nstats = from->dims[0]->nstats = 1; // so that all are released
    }
}

TEST(ChanDescrMergeDims, CountsTheStatisticsOfACloneAnew) {
    for (bool force : {false, true}) {
        channel_list list;
        chan_descr_2010 *in = list.add(make_channel("ORVIN/A")), *from = list.add(make_channel("ORVIN/A"));
        add_dims(from, {{0, {7, 8}}}, "f");
        from->dims[0]->nstats = 5;
        EXPECT_EQ(merge(in, from, force).dims, "1: 0fff(2: 7fff 8fff)");
    }
}

// Kept: a count of 0 guards the statistics beside it, as in releasing a list.
TEST(ChanDescrMergeDims, ReportsHiddenStatisticsOfAReplacedDimensionAndLeavesThem) {
    channel_list list;
    chan_descr_2010 *in = list.add(make_channel("ORVIN/A")), *from = list.add(make_channel("ORVIN/A"));
    add_dims(in, {{0, {1}}, {1, {2}}, {2, {3, 4}}}, "i");
    add_dims(from, {{5, {6}}}, "f");
    const std::vector<stat_descr *> hidden = {in->dims[0]->stats[0], in->dims[2]->stats[0],
                                              in->dims[2]->stats[1]};
    in->dims[0]->nstats = in->dims[2]->nstats = 0;
    const merge_outcome seen = merge(in, from, true);
    EXPECT_EQ(seen.dims, "1: 5fff(1: 6fff)");
    EXPECT_EQ(seen.out, "ERROR: nstats = 0, but stats.size() > 0 (1) prop: ORVIN/A\n"
                        "ERROR: nstats = 0, but stats.size() > 0 (2) prop: ORVIN/A\n");
    EXPECT_EQ(describe(*hidden[0]), "    stat 1 'i' 'i' 'i'\n");
    EXPECT_EQ(describe(*hidden[2]), "    stat 4 'i' 'i' 'i'\n");
    for (const stat_descr *stat : hidden)
        delete stat;
}

TEST(ChanDescrMergeDims, LeavesHiddenStatisticsAloneWhenNothingIsReplaced) {
    channel_list list;
    chan_descr_2010 *in = list.add(make_channel("ORVIN/A")), *from = list.add(make_channel("ORVIN/A"));
    add_dims(in, {{0, {1}}}, "i");
    in->dims[0]->nstats = 0;
    const merge_outcome seen = merge(in, from, true);
    EXPECT_EQ(seen.dims, "1: 0iii(0: 1iii)");
    EXPECT_EQ(seen.out, "");
    in->dims[0]->nstats = 1;
}

TEST(ChanDescrMergeDims, PassesOverNullDimensionsOfTheSource) {
    for (bool force : {false, true}) {
        channel_list list;
        chan_descr_2010 *in = list.add(make_channel("ORVIN/A")), *from = list.add(make_channel("ORVIN/A"));
        add_dims(in, {{0, {}}}, "i");
        add_dims(from, {{0, {7}}, {4, {8}}}, "f");
        const std::vector<dim_descr *> dims = from->dims;
        from->dims = {nullptr, dims[0], nullptr, dims[1], nullptr};
        const captured seen = capture([&] { EXPECT_FALSE(extend_channel_description(in, from, force)); });
        from->dims = dims; // so that the list can be released
        EXPECT_EQ(seen.out + seen.err, "");
        EXPECT_EQ(dims_of(*in), force ? "2: 0fff(1: 7fff) 4fff(1: 8fff)" : "2: 0iii(1: 7fff) 4fff(1: 8fff)");
    }
}

TEST(ChanDescrMergeDims, PassesOverNullDimensionsOfTheTarget) {
    for (bool force : {false, true}) {
        channel_list list;
        chan_descr_2010 *in = list.add(make_channel("ORVIN/A")), *from = list.add(make_channel("ORVIN/A"));
        add_dims(in, {{0, {}}}, "i");
        in->dims.push_back(nullptr);
        add_dims(from, {{0, {7}}, {4, {8}}}, "f");
        const captured seen = capture([&] { EXPECT_FALSE(extend_channel_description(in, from, force)); });
        EXPECT_EQ(seen.out + seen.err, "");
        EXPECT_EQ(std::erase(in->dims, nullptr), force ? 0u : 1u);
        EXPECT_EQ(dims_of(*in), force ? "2: 0fff(1: 7fff) 4fff(1: 8fff)" : "2: 0iii(1: 7fff) 4fff(1: 8fff)");
    }
}

TEST(ChanDescrMergeDims, TakesTheFirstOfEachNumberAmongThousands) {
    constexpr int number = 20'000;
    channel_list list;
    chan_descr_2010 *const in = list.add(make_channel("ORVIN/A"));
    chan_descr_2010 *const from = list.add(make_channel("ORVIN/A"));
    for (int i = 0; i < number; ++i) {
        add_bit(in, 2 * i, "in");
        add_bit(from, i / 2 * 3, i % 2 ? "second" : "first");
        add_dim(in, -i, "in");
        add_dim(from, 1 - i, "from");
    }
    ASSERT_FALSE(extend_channel_description(in, from, false));
    // every third number up to 29,997; the even ones are known
    EXPECT_EQ(in->nbits, number + number / 4);
    EXPECT_EQ(in->bits.size(), static_cast<std::size_t>(in->nbits));
    EXPECT_EQ(describe(*in->bits[number]), "  bit 3 'first' ''\n");
    EXPECT_EQ(describe(*in->bits.back()), "  bit 29997 'first' ''\n");
    EXPECT_EQ(in->ndims, number + 1);
    EXPECT_EQ(describe(*in->dims.back()), "  dim 1 'from' '' '' nstats 0\n");
}

} // namespace
