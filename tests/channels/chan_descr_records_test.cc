/// What can be done with channel records: finding one by its property, copying parts, releasing a list.

#include "parse_chan_descr.h"

#include <gtest/gtest.h>

#include "support/capture.h"
#include "support/channel_records.h"

namespace {

// Look-up

TEST(ChanDescrRecordsLookUp, ReturnsTheFirstRecordWithExactlyThatProperty) {
    channel_list list;
    list.add(make_channel("ORVIN/A", "first"));
    list.add(make_channel("ORVIN/B", "second"));
    list.add(make_channel("ORVIN/A", "third"));
    EXPECT_EQ(find_chan_entry(list, "ORVIN/A"), list.records[0]);
    EXPECT_EQ(find_chan_entry(list, "ORVIN/B"), list.records[1]);
}

TEST(ChanDescrRecordsLookUp, ComparesWholeNamesAndCase) {
    channel_list list;
    list.add(make_channel("ORVIN/A"));
    for (const char *name : {"orvin/a", "ORVIN/", "ORVIN/A ", "ORVIN/AB", " ORVIN/A", ""})
        EXPECT_EQ(find_chan_entry(list, name), nullptr) << '"' << name << '"';
}

TEST(ChanDescrRecordsLookUp, FindsARecordWithoutPropertyByTheEmptyName) {
    channel_list list;
    list.add(make_channel("ORVIN/A"));
    list.add(make_channel(""));
    EXPECT_EQ(find_chan_entry(list, ""), list.records[1]);
}

TEST(ChanDescrRecordsLookUp, DoesNotFindATextThatIsLongerThanTheStoredName) {
    const std::string longest(255, 'p');
    channel_list list;
    list.add(make_channel(longest.c_str()));
    EXPECT_EQ(find_chan_entry(list, longest.c_str()), list.records[0]);
    EXPECT_EQ(find_chan_entry(list, (longest + "p").c_str()), nullptr);
    EXPECT_EQ(find_chan_entry(list, longest.substr(1).c_str()), nullptr);
}

TEST(ChanDescrRecordsLookUp, PassesOverNullRecords) {
    chan_descr_2010 *const record = make_channel("ORVIN/A");
    const std::vector<chan_descr_2010 *> list = {nullptr, record, nullptr};
    EXPECT_EQ(find_chan_entry(&list, "ORVIN/A"), record);
    EXPECT_EQ(find_chan_entry(&list, "ORVIN/B"), nullptr);
    EXPECT_EQ(find_chan_entry(&list, ""), nullptr);
    delete record;
}

TEST(ChanDescrRecordsLookUp, AnswersNullForEmptyAndMissingArguments) {
    channel_list list;
    EXPECT_EQ(find_chan_entry(list, "ORVIN/A"), nullptr);
    EXPECT_EQ(find_chan_entry(nullptr, "ORVIN/A"), nullptr);
    list.add(make_channel("ORVIN/A"));
    EXPECT_EQ(find_chan_entry(list, nullptr), nullptr);
}

// Tag table

// Kept: rows 14 to 17, COUNT to DB_KEY, are read and written but never handed out; callers that walk the rows
// until null rely on it.
TEST(ChanDescrRecordsRootTag, HandsOutRows0To13AndNullElsewhere) {
    const struct {
        int row;
        const char *columns[3];
    } rows[] = {
        {0, {"CHANDESCRIPTIONS", nullptr, nullptr}},
        {1, {"CHANNEL", nullptr, nullptr}},
        {2, {"EVTYPE", nullptr, nullptr}},
        {3, {"STREAM", nullptr, nullptr}},
        {4, {"PROP", nullptr, nullptr}},
        {5, {"NAME", nullptr, nullptr}},
        {6, {"DESC", nullptr, nullptr}},
        {7, {"UNITS", "DIM_UNITS", "STAT_UNITS"}},
        {8, {"SIZE", nullptr, nullptr}},
        {9, {"BIT", "DIM", "STAT"}},
        {10, {"BIT_NAME", "DIM_NAME", "STAT_NAME"}},
        {11, {"BIT_DESCR", "DIM_DESCR", "STAT_DESCR"}},
        {12, {"SB_NAME", nullptr, nullptr}},
        {13, {"DTYPE", nullptr, nullptr}},
        {14, {nullptr, nullptr, nullptr}},
        {15, {nullptr, nullptr, nullptr}},
        {16, {nullptr, nullptr, nullptr}},
        {17, {nullptr, nullptr, nullptr}},
        {18, {nullptr, nullptr, nullptr}},
        {-1, {nullptr, nullptr, nullptr}},
        {INT32_MAX, {nullptr, nullptr, nullptr}},
        {INT32_MIN, {nullptr, nullptr, nullptr}},
    };
    for (const auto &row : rows) {
        for (int column = 0; column < 3; ++column)
            EXPECT_STREQ(get_chan_descr_root_tag(row.row, column), row.columns[column])
                << row.row << ", " << column;
        for (int column : {-1, 3, INT32_MAX, INT32_MIN})
            EXPECT_EQ(get_chan_descr_root_tag(row.row, column), nullptr) << row.row << ", " << column;
    }
}

// New records

TEST(ChanDescrRecordsChannel, StartsEmptyWithAnUnknownKeyAndSizeOne) {
    const chan_descr_2010 record;
    EXPECT_EQ(describe(record), "prop ''\n"
                                "daq ''\n"
                                "stream 0\n"
                                "ev_type 0x0\n"
                                "dtype 0x0\n"
                                "count 0\n"
                                "db_key -1\n"
                                "desc ''\n"
                                "units ''\n"
                                "max_size 1\n"
                                "sb_name ''\n"
                                "set_point 0\n"
                                "subsystem ''\n"
                                "nbits 0\n"
                                "ndims 0\n");
}

// Cloning

TEST(ChanDescrRecordsClones, GiveNullForNull) {
    EXPECT_EQ(zeb5_clone_bit_descr(nullptr), nullptr);
    EXPECT_EQ(zeb5_clone_stat_descr(nullptr), nullptr);
    EXPECT_EQ(zeb5_clone_dim_descr(nullptr), nullptr);
}

TEST(ChanDescrRecordsClones, CopyEveryFieldIntoARecordOfTheirOwn) {
    channel_list list;
    chan_descr_2010 *source = list.add(make_channel("ORVIN/A"));
    chan_descr_2010 *copies = list.add(make_channel("ORVIN/A"));
    for (const std::string &fill : {std::string(), std::string("short"), std::string(300, 'x')}) {
        add_bit(source, -3, fill.c_str(), fill.c_str());
        add_stat(add_dim(source, -7, fill.c_str(), fill.c_str(), fill.c_str()), INT32_MAX, fill.c_str(),
                 fill.c_str(), fill.c_str());
    }
    add_stat(source->dims[0], 12, "second", "of two", "V");
    for (const bit_descr *bit : source->bits) {
        copies->bits.push_back(zeb5_clone_bit_descr(bit));
        ++copies->nbits;
        EXPECT_NE(copies->bits.back(), bit);
    }
    for (const dim_descr *dim : source->dims) {
        copies->dims.push_back(zeb5_clone_dim_descr(dim));
        ++copies->ndims;
        EXPECT_NE(copies->dims.back(), dim);
        EXPECT_NE(copies->dims.back()->stats[0], dim->stats[0]);
    }
    EXPECT_EQ(describe(*copies), describe(*source));
}

TEST(ChanDescrRecordsClones, CopyAStatisticAlone) {
    stat_descr source = {};
    source.stat = 5;
    set_text(source.stat_name, "rms");
    set_text(source.stat_desc, std::string(79, 'd'));
    set_text(source.units, std::string(15, 'u'));
    stat_descr *copy = zeb5_clone_stat_descr(&source);
    ASSERT_NE(copy, nullptr);
    EXPECT_NE(copy, &source);
    EXPECT_EQ(describe(*copy), describe(source));
    delete copy;
}

TEST(ChanDescrRecordsClones, TerminateTextsWhoseSourceFillsItsField) {
    bit_descr source;
    source.bit = 1;
    memset(source.bit_name, 'n', sizeof(source.bit_name));
    memset(source.bit_desc, 'd', sizeof(source.bit_desc));
    source.bit_desc[sizeof(source.bit_desc) - 1] = '\0'; // the name must run into a terminated neighbour
    bit_descr *copy = zeb5_clone_bit_descr(&source);
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(describe(*copy), "  bit 1 '" + std::string(63, 'n') + "' '" + std::string(79, 'd') + "'\n");
    delete copy;
}

TEST(ChanDescrRecordsClones, CountTheStatisticsOfADimensionAnew) {
    for (int claimed : {0, 1, 2, 5, -1}) {
        channel_list list;
        chan_descr_2010 *channel = list.add(make_channel("ORVIN/A"));
        dim_descr *source = add_dim(channel, 0);
        add_stat(source, 1, "mean");
        add_stat(source, 2, "rms");
        source->nstats = claimed;
        dim_descr *copy = zeb5_clone_dim_descr(source);
        source->nstats = 2;
        channel->dims.push_back(copy);
        channel->ndims = 2;
        ASSERT_NE(copy, nullptr);
        EXPECT_EQ(describe(*copy), "  dim 0 '' '' '' nstats 2\n"
                                   "    stat 1 'mean' '' ''\n"
                                   "    stat 2 'rms' '' ''\n")
            << "claimed " << claimed;
    }
}

TEST(ChanDescrRecordsClones, GiveADimensionWithoutStatisticsACountOfZero) {
    dim_descr source = {};
    source.nstats = 5;
    dim_descr *copy = zeb5_clone_dim_descr(&source);
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(describe(*copy), "  dim 0 '' '' '' nstats 0\n");
    delete copy;
}

// Releasing

captured clean(std::vector<chan_descr_2010 *> *list) {
    return capture([&] { clean_chan_desr_list(list); });
}

TEST(ChanDescrRecordsCleaning, DoesNothingForANullOrAnEmptyList) {
    std::vector<chan_descr_2010 *> empty;
    for (auto *list : {static_cast<std::vector<chan_descr_2010 *> *>(nullptr), &empty}) {
        const captured seen = clean(list);
        EXPECT_EQ(seen.out, "");
        EXPECT_EQ(seen.err, "");
    }
}

TEST(ChanDescrRecordsCleaning, ReleasesAllThatTheRecordsHoldAndEmptiesTheList) {
    std::vector<chan_descr_2010 *> list;
    for (const char *prop : {"ORVIN/A", "ORVIN/B", "ORVIN/A"}) {
        list.push_back(make_channel(prop));
        add_bit(list.back(), 0);
        add_bit(list.back(), 1);
        add_stat(add_dim(list.back(), 0), 0);
        add_dim(list.back(), 1);
    }
    const captured seen = clean(&list); // what it leaves behind, a leak checker reports
    EXPECT_EQ(seen.out, "");
    EXPECT_EQ(seen.err, "");
    EXPECT_TRUE(list.empty());
}

// A channel with two identities stands in its list twice: releasing it twice would corrupt the heap.
TEST(ChanDescrRecordsCleaning, ReleasesARecordThatStandsTwiceOnce) {
    std::vector<chan_descr_2010 *> list;
    chan_descr_2010 *twice = make_channel("ORVIN/A");
    add_bit(twice, 0);
    add_stat(add_dim(twice, 0), 0);
    list = {twice, make_channel("ORVIN/B"), twice, twice};
    const captured seen = clean(&list);
    EXPECT_EQ(seen.out, "");
    EXPECT_TRUE(list.empty());
}

// Kept: a count of 0 guards the sub-records beside it; applications that lend records to a list rely on it.
TEST(ChanDescrRecordsCleaning, ReportsBitsBesideACountOfZeroAndLeavesThem) {
    std::vector<chan_descr_2010 *> list = {make_channel("ORVIN/A"), make_channel("ORVIN/B")};
    bit_descr *kept[] = {add_bit(list[0], 4, "four"), add_bit(list[0], 5, "five")};
    list[0]->nbits = 0;
    add_bit(list[1], 6);
    const captured seen = clean(&list);
    EXPECT_EQ(seen.out, "ERROR: nbits = 0, but bits.size() > 0 prop: ORVIN/A\n");
    EXPECT_EQ(seen.err, "");
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(describe(*kept[0]), "  bit 4 'four' ''\n");
    EXPECT_EQ(describe(*kept[1]), "  bit 5 'five' ''\n");
    for (const bit_descr *bit : kept)
        delete bit;
}

// Kept: as for bits; the statistics of such a dimension stay with it.
TEST(ChanDescrRecordsCleaning, ReportsDimensionsBesideACountOfZeroAndLeavesThem) {
    std::vector<chan_descr_2010 *> list = {make_channel("ORVIN/A")};
    dim_descr *kept = add_dim(list[0], 3, "x");
    const stat_descr *stat = add_stat(kept, 1, "mean");
    list[0]->ndims = 0;
    const captured seen = clean(&list);
    EXPECT_EQ(seen.out, "ERROR: ndims = 0, but dims.size() > 0 prop: ORVIN/A\n");
    EXPECT_EQ(describe(*kept), "  dim 3 'x' '' '' nstats 1\n"
                               "    stat 1 'mean' '' ''\n");
    delete stat;
    delete kept;
}

// Kept: as for bits; the dimension itself goes.
TEST(ChanDescrRecordsCleaning, ReportsStatisticsBesideACountOfZeroAndLeavesThem) {
    std::vector<chan_descr_2010 *> list = {make_channel("ORVIN/A")};
    dim_descr *dim = add_dim(list[0], 3);
    stat_descr *kept[] = {add_stat(dim, 1, "mean"), add_stat(dim, 2, "rms")};
    dim->nstats = 0;
    add_stat(add_dim(list[0], 4), 1);
    const captured seen = clean(&list);
    EXPECT_EQ(seen.out, "ERROR: nstats = 0, but stats.size() > 0 (2) prop: ORVIN/A\n");
    EXPECT_EQ(describe(*kept[0]), "    stat 1 'mean' '' ''\n");
    EXPECT_EQ(describe(*kept[1]), "    stat 2 'rms' '' ''\n");
    for (const stat_descr *stat : kept)
        delete stat;
}

TEST(ChanDescrRecordsCleaning, ReportsBitsBeforeDimensionsAndRecordsInListOrder) {
    std::vector<chan_descr_2010 *> list = {make_channel("ORVIN/A"), make_channel("ORVIN/B")};
    const bit_descr *bit = add_bit(list[0], 0);
    const dim_descr *dim = add_dim(list[0], 0);
    list[0]->nbits = list[0]->ndims = 0;
    dim_descr *owner = add_dim(list[1], 0);
    const stat_descr *stat = add_stat(owner, 0);
    owner->nstats = 0;
    const captured seen = clean(&list);
    EXPECT_EQ(seen.out, "ERROR: nbits = 0, but bits.size() > 0 prop: ORVIN/A\n"
                        "ERROR: ndims = 0, but dims.size() > 0 prop: ORVIN/A\n"
                        "ERROR: nstats = 0, but stats.size() > 0 (1) prop: ORVIN/B\n");
    delete bit;
    delete dim;
    delete stat;
}

TEST(ChanDescrRecordsCleaning, ReportsAnInconsistentRecordThatStandsTwiceOnce) {
    chan_descr_2010 *twice = make_channel("ORVIN/A");
    std::vector<chan_descr_2010 *> list = {twice, twice};
    const bit_descr *bit = add_bit(twice, 0);
    twice->nbits = 0;
    EXPECT_EQ(clean(&list).out, "ERROR: nbits = 0, but bits.size() > 0 prop: ORVIN/A\n");
    delete bit;
}

TEST(ChanDescrRecordsCleaning, ReleasesSubRecordsWhateverACountOtherThanZeroSays) {
    for (int count : {1, 7, -1}) {
        std::vector<chan_descr_2010 *> list = {make_channel("ORVIN/A")};
        add_bit(list[0], 0);
        add_bit(list[0], 1);
        dim_descr *dim = add_dim(list[0], 0);
        add_dim(list[0], 1);
        add_stat(dim, 0);
        add_stat(dim, 1);
        list[0]->nbits = list[0]->ndims = dim->nstats = count;
        EXPECT_EQ(clean(&list).out, "") << count;
    }
}

TEST(ChanDescrRecordsCleaning, PassesOverNullRecordsAndParts) {
    std::vector<chan_descr_2010 *> list = {nullptr, make_channel("ORVIN/A"), nullptr};
    add_bit(list[1], 0);
    dim_descr *const dim = add_dim(list[1], 0);
    add_stat(dim, 0);
    list[1]->bits.push_back(nullptr);
    dim->stats.push_back(nullptr);
    list[1]->dims = {nullptr, dim, nullptr};
    EXPECT_EQ(clean(&list).out, "");
    EXPECT_TRUE(list.empty());
}

} // namespace
