/// The listing of channel records that print_zeb5_chan_descr() writes.

#include "parse_chan_descr.h"

#include <algorithm>
#include <cstring>

#include <gtest/gtest.h>

#include "support/capture.h"
#include "support/channel_records.h"

namespace {

const char head[] = "========================\n"
                    "ZEB5 XML Channel Description (XCD)\n";

std::string listing(const std::vector<chan_descr_2010 *> *list) {
    const captured seen = capture([&] { print_zeb5_chan_descr(list); });
    EXPECT_EQ(seen.err, "");
    return seen.out;
}

TEST(ChanDescrRecordsListing, WritesNothingForANullListAndTheHeadForAnEmptyOne) {
    channel_list empty;
    EXPECT_EQ(listing(nullptr), "");
    EXPECT_EQ(listing(empty), head);
}

TEST(ChanDescrRecordsListing, ListsEveryFieldOfEveryRecord) {
    channel_list list;
    list.add(make_channel(""));
    chan_descr_2010 *full = list.add(make_channel("ORVIN/A/B", "daq.name"));
    full->stream = 12;
    full->ev_type = 0x42;
    full->count = -5;
    full->dtype = 0x80000200;
    full->db_key = 4711;
    full->set_point = 2;
    full->max_size = 1024;
    set_text(full->prop_desc, "a description");
    set_text(full->sb_name, "server.block");
    set_text(full->subsystem, "RF");
    set_text(full->units, "MV/m");
    add_bit(full, 3, "READY", "is ready");
    add_bit(full, 31);
    dim_descr *dim = add_dim(full, 0, "time", "of the sample", "us");
    add_stat(dim, 1, "mean", "of all", "V");
    add_stat(dim, 2);
    add_dim(full, 7);
    EXPECT_EQ(listing(list), std::string(head) + "--------------[0]-----------------\n"
                                                 " stream   : 0 \n"
                                                 " ev type  : 0x0 \n"
                                                 " data type: 0x0 \n"
                                                 "\tcount  :0\n"
                                                 "\tdb_key :-1\n"
                                                 "\tprop   :\n"
                                                 "\tname   :\n"
                                                 "\tset_pnt:no\n"
                                                 "\tdesc   :\n"
                                                 "\tsb_name:\n"
                                                 "\tsubsys :\n"
                                                 "\tunit   :\n"
                                                 "\tmax_sz :1\n"
                                                 "--------------[1]-----------------\n"
                                                 " stream   : 12 \n"
                                                 " ev type  : 0x42 NORMAL:IMAGE\n"
                                                 " data type: 0x80000200 BLOCK_1CHAN_2010\n"
                                                 "\tcount  :-5\n"
                                                 "\tdb_key :4711\n"
                                                 "\tprop   :ORVIN/A/B\n"
                                                 "\tname   :daq.name\n"
                                                 "\tset_pnt:yes\n"
                                                 "\tdesc   :a description\n"
                                                 "\tsb_name:server.block\n"
                                                 "\tsubsys :RF\n"
                                                 "\tunit   :MV/m\n"
                                                 "\tmax_sz :1024\n"
                                                 "\t\t# bits :2\n"
                                                 "\t\tbit    : 3\n"
                                                 "\t\tname   : READY\n"
                                                 "\t\tdesc   : is ready\n"
                                                 "\t\tbit    : 31\n"
                                                 "\t\tname   : \n"
                                                 "\t\tdesc   : \n"
                                                 "\t\t# dims : 2\n"
                                                 "\t\tid    : 0\n"
                                                 "\t\tname : time\n"
                                                 "\t\tdesc : of the sample\n"
                                                 "\t\tunits: us\n"
                                                 "\t\t\t# stats : 2\n"
                                                 "\t\t\tid     : 1\n"
                                                 "\t\t\tname   : mean\n"
                                                 "\t\t\tdesc   : of all\n"
                                                 "\t\t\tunits  : V\n"
                                                 "\t\t\tid     : 2\n"
                                                 "\t\t\tname   : \n"
                                                 "\t\t\tdesc   : \n"
                                                 "\t\t\tunits  : \n"
                                                 "\t\tid    : 7\n"
                                                 "\t\tname : \n"
                                                 "\t\tdesc : \n"
                                                 "\t\tunits: \n");
}

/// Two parts of the listing of one record.
struct split_listing {
    std::string types; // the two lines with the type names
    std::string tail;  // what follows the max_sz line
};

split_listing list_one(chan_descr_2010 *record) {
    const std::vector<chan_descr_2010 *> list = {record};
    const std::string all = listing(&list);
    const size_t types = all.find(" ev type"), fields = all.find("\tcount"), size = all.find("\tmax_sz");
    if (types == std::string::npos || fields == std::string::npos || size == std::string::npos)
        return {all, all};
    return {all.substr(types, fields - types), all.substr(all.find('\n', size) + 1)};
}

TEST(ChanDescrRecordsListing, NamesTheTypesInTheMasks) {
    const struct {
        uint32_t ev_type, dtype;
        const char *lines;
    } rows[] = {
        {0, 0,
         " ev type  : 0x0 \n"
         " data type: 0x0 \n"},
        {1, 1,
         " ev type  : 0x1 HB\n"
         " data type: 0x1 0\n"},
        {0x80000000, 0x80000000,
         " ev type  : 0x80000000 31\n"
         " data type: 0x80000000 \n"},
        {0x80000001, 0x80000001,
         " ev type  : 0x80000001 HB:31\n"
         " data type: 0x80000001 32\n"},
        {8, 0x200,
         " ev type  : 0x8 EOR\n"
         " data type: 0x200 BLOCK_SINGLE\n"},
        {8, 0x80000200,
         " ev type  : 0x8 EOR\n"
         " data type: 0x80000200 BLOCK_1CHAN_2010\n"},
        {0x08100000, 0x60000002,
         " ev type  : 0x8100000 LLRF_ML:TOROID_ML\n"
         " data type: 0x60000002 UPD_BLOCK:29:30\n"},
        {0x7, 0xe0000002,
         " ev type  : 0x7 HB:NORMAL:BOR\n"
         " data type: 0xe0000002 UPD_BLOCK_2010:BLOCK_5CHAN_2010:BLOCK_7CHAN_2010\n"},
    };
    for (const auto &row : rows) {
        chan_descr_2010 record;
        record.ev_type = row.ev_type;
        record.dtype = row.dtype;
        EXPECT_EQ(list_one(&record).types, row.lines);
    }
}

TEST(ChanDescrRecordsListing, NamesAllEventTypes) {
    chan_descr_2010 record;
    record.ev_type = 0xffffffff;
    EXPECT_EQ(list_one(&record).types,
              " ev type  : 0xffffffff HB:NORMAL:BOR:EOR:ENV:UPD:IMAGE:WS:MCP:WSS:BL1:BL2:BL3:PG0:PG1:PG2:GMD:"
              "PHOTEN:PHOTWL:BEAM_ENERGY:LLRF_ML:BEAM_ENERGY_BYPASS:SPECTR_1:SPECTR_2:SPECTR_3:SPECTR_4:"
              "SPECTR_5:TOROID_ML:28:29:30:31\n"
              " data type: 0x0 \n");
}

// Kept: readers of the listing expect lines of bounded length, so a list of names ends at 255 bytes,
// mid-name.
TEST(ChanDescrRecordsListing, CutsLongNameListsAt255Bytes) {
    const std::string classic =
        "0:UPD_BLOCK:ENV_DICT_BLOCK:ENV_BLOCK:BOR_BLOCK:EOR_BLOCK:BLOCK_BPM:BLOCK_BPM_Z:"
        "BLOCK_BPM_S:BLOCK_SINGLE:BLOCK_TOROID:BLOCK_RF_250K:BLOCK_ENERGY:BLOCK_IMAGE:"
        "BLOCK_WS_FAST:BLOCK_WS_SLOW:BLOCK_CPLINTL:BLOCK_GUNINTL:BLOCK_MCP:BLOCK_PHM:"
        "BLOCK_WSS_RAW:BLOCK_WSS_COR";
    const std::string middle = "ENV_BLOCK_2010:BOR_BLOCK_2010:EOR_BLOCK_2010:BLOCK_BPM_2010:BLOCK_BPM_Z_2010:"
                               "BLOCK_BPM_S_2010:BLOCK_1CHAN_2010:BLOCK_TOROID_2010:BLOCK_RF_250K_2010:"
                               "BLOCK_ENERGY_2010:BLOCK_2CHAN_2010:BLOCK_WS_2010:BLOCK_4CHAN_2010:"
                               "BLOCK_CPLINTL_2010";
    const std::string whole_254 = "32:" + middle + ":BLOCK_GUNINTL_2010";
    const std::string whole_255 = "32:ENV_DICT_BLOCK_2010:" + middle;
    const std::string too_long = "32:UPD_BLOCK_2010:ENV_DICT_BLOCK_2010:" + middle;
    ASSERT_EQ(whole_254.size(), 254u);
    ASSERT_EQ(whole_255.size(), 255u);
    const struct {
        uint32_t dtype;
        std::string line;
    } rows[] = {
        {0x7fffffff, " data type: 0x7fffffff " + classic.substr(0, 255) + '\n'},
        {0xffffffff, " data type: 0xffffffff " + too_long.substr(0, 255) + '\n'},
        {0x8003fff9, " data type: 0x8003fff9 " + whole_254 + '\n'},
        {0xc003fff9, " data type: 0xc003fff9 " + whole_254 + ":\n"},
        {0x8001fffd, " data type: 0x8001fffd " + whole_255 + '\n'},
        {0xc001fffd, " data type: 0xc001fffd " + whole_255 + '\n'},
    };
    for (const auto &row : rows) {
        chan_descr_2010 record;
        record.dtype = row.dtype;
        EXPECT_EQ(list_one(&record).types, " ev type  : 0x0 \n" + row.line);
    }
}

TEST(ChanDescrRecordsListing, ReportsSubRecordsBesideACountOfZero) {
    channel_list list;
    chan_descr_2010 *channel = list.add(make_channel("ORVIN/A"));
    add_bit(channel, 3, "READY");
    dim_descr *dim = add_dim(channel, 0, "time");
    add_stat(dim, 1, "mean");

    channel->nbits = channel->ndims = 0;
    EXPECT_EQ(list_one(channel).tail, "ERROR: nbits = 0, but bits.size() > 0\n"
                                      "ERROR: ndims = 0, but dims.size() > 0\n");
    channel->ndims = 1;
    dim->nstats = 0;
    EXPECT_EQ(list_one(channel).tail, "ERROR: nbits = 0, but bits.size() > 0\n"
                                      "\t\t# dims : 1\n"
                                      "\t\tid    : 0\n"
                                      "\t\tname : time\n"
                                      "\t\tdesc : \n"
                                      "\t\tunits: \n"
                                      "ERROR: nstats = 0, but stats.size() > 0\n");
    channel->nbits = dim->nstats = 1; // as they must be for the list to release them
}

TEST(ChanDescrRecordsListing, ShowsTheCountAndWalksTheVectors) {
    channel_list list;
    chan_descr_2010 *channel = list.add(make_channel("ORVIN/A"));
    chan_descr_2010 *without = list.add(make_channel("ORVIN/B"));
    add_bit(channel, 3);
    dim_descr *dim = add_dim(channel, 0);
    add_stat(dim, 1);
    channel->nbits = -1;
    channel->ndims = 8;
    dim->nstats = 9;
    EXPECT_EQ(list_one(channel).tail, "\t\t# bits :-1\n"
                                      "\t\tbit    : 3\n"
                                      "\t\tname   : \n"
                                      "\t\tdesc   : \n"
                                      "\t\t# dims : 8\n"
                                      "\t\tid    : 0\n"
                                      "\t\tname : \n"
                                      "\t\tdesc : \n"
                                      "\t\tunits: \n"
                                      "\t\t\t# stats : 9\n"
                                      "\t\t\tid     : 1\n"
                                      "\t\t\tname   : \n"
                                      "\t\t\tdesc   : \n"
                                      "\t\t\tunits  : \n");
    without->nbits = 2;
    without->ndims = 3;
    EXPECT_EQ(list_one(without).tail, "\t\t# bits :2\n"
                                      "\t\t# dims : 3\n");
}

TEST(ChanDescrRecordsListing, ListsARecordThatStandsTwiceTwice) {
    chan_descr_2010 record;
    const std::vector<chan_descr_2010 *> once = {&record}, twice = {&record, &record};
    const std::string one = listing(&once);
    const std::string fields = one.substr(one.find(" stream"));
    EXPECT_EQ(listing(&twice), one + "--------------[1]-----------------\n" + fields);
}

TEST(ChanDescrRecordsListing, PassesOverNullRecordsAndParts) {
    channel_list list;
    chan_descr_2010 *const channel = list.add(make_channel("ORVIN/A"));
    add_bit(channel, 3);
    add_stat(add_dim(channel, 0), 1);
    std::string expected = listing(list);
    channel->bits.insert(channel->bits.begin(), nullptr);
    channel->dims[0]->stats.push_back(nullptr);
    channel->dims.push_back(nullptr);
    list.records.push_back(nullptr);
    EXPECT_EQ(listing(list), expected);
    std::rotate(list.records.begin(), list.records.begin() + 1, list.records.end());
    expected.replace(expected.find("[0]"), 3, "[1]"); // its place in the list
    EXPECT_EQ(listing(list), expected);
}

TEST(ChanDescrRecordsListing, ShowsAllOfAFieldWhoseEndIsOverwritten) {
    channel_list list;
    chan_descr_2010 *const channel = list.add(make_channel("ORVIN/A"));
    std::memset(channel->prop_name, 'p', sizeof channel->prop_name);
    std::memset(channel->units, 'u', sizeof channel->units);
    bit_descr *const bit = add_bit(channel, 3);
    std::memset(bit->bit_desc, 'b', sizeof bit->bit_desc);
    const std::string seen = listing(list);
    for (const std::string &line : {"\tprop   :" + std::string(sizeof channel->prop_name, 'p') + '\n',
                                    "\tunit   :" + std::string(sizeof channel->units, 'u') + '\n',
                                    "\t\tdesc   : " + std::string(sizeof bit->bit_desc, 'b') + '\n'})
        EXPECT_NE(seen.find(line), seen.npos) << seen;
}

TEST(ChanDescrRecordsListing, TakesAListThatMayBeChangedAndOneThatMayNot) {
    channel_list list;
    list.add(make_channel("ORVIN/A"));
    std::vector<chan_descr_2010 *> *const changeable = list;
    const captured seen = capture([&] { print_zeb5_chan_descr(changeable); });
    EXPECT_EQ(seen.out, listing(list));
}

} // namespace
