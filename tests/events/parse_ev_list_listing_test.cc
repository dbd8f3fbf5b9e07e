/// Listing and releasing event lists.

#include "parse_ev_list.h"

#include <gtest/gtest.h>

#include "support/capture.h"
#include "support/event_list_records.h"

namespace {

std::string listing_of(const std::vector<zeb5_ev_entry *> *list) {
    const captured seen = capture([&] { zeb5_print_ev_list(list); });
    EXPECT_EQ(seen.err, "");
    return seen.out;
}

} // namespace

TEST(ParseEvListListing, ShowsEveryFieldOfEveryEntry) {
    event_list list;
    zeb5_ev_entry *const full = add_entry(list, ZEB5_EV_IMAGE);
    full->tmask = 0xDEADBEEF;
    full->min_ev_time = {1700000000, 999999};
    full->priority = 26;
    add_block(full, "RF.SERVER", {"A/AMPL", "A/PHASE", ""});
    add_block(full, "BPM.SERVER");
    add_entry(list, ZEB5_EV_HB);
    EXPECT_EQ(listing_of(&list.entries), "Entry[0]\n"
                                         "EVENT TYPE:\tIMAGE\n"
                                         "Trigger mask:\t0xdeadbeef (3735928559)\n"
                                         "Min event time:\t1700000000 sec 999999 usec\n"
                                         "Priority:\t0x1a (26)\n"
                                         "Server Blocks: 2\n"
                                         "Server block[0]: 'RF.SERVER'\n"
                                         "Channels: 3\n"
                                         "Channel[0]:\t'A/AMPL'\n"
                                         "Channel[1]:\t'A/PHASE'\n"
                                         "Channel[2]:\t''\n"
                                         "Server block[1]: 'BPM.SERVER'\n"
                                         "No channel list -> ALL channels\n"
                                         "Entry[1]\n"
                                         "EVENT TYPE:\tHB\n"
                                         "Trigger mask:\t0x0 (0)\n"
                                         "Min event time:\t0 sec 0 usec\n"
                                         "Priority:\t0x0 (0)\n"
                                         "Server Blocks: 0\n");
}

TEST(ParseEvListListing, TellsWhatAnEntryLacks) {
    event_list list;
    zeb5_ev_entry *const whole = add_entry(list, ZEB5_EV_EVMAX);
    delete std::exchange(whole->sb_list, nullptr);
    zeb5_ev_sb_list *const block = add_block(add_entry(list, 33), "");
    delete std::exchange(block->ch_list, nullptr);
    EXPECT_EQ(listing_of(&list.entries), "Entry[0]\n"
                                         "EVENT TYPE:\tEVMAX\n"
                                         "Trigger mask:\t0x0 (0)\n"
                                         "Min event time:\t0 sec 0 usec\n"
                                         "Priority:\t0x0 (0)\n"
                                         "No server block list -> Full event\n"
                                         "Entry[1]\n"
                                         "EVENT TYPE:\t33\n"
                                         "Trigger mask:\t0x0 (0)\n"
                                         "Min event time:\t0 sec 0 usec\n"
                                         "Priority:\t0x0 (0)\n"
                                         "Server Blocks: 1\n"
                                         "Server block[0]: ''\n"
                                         "No channel list -> ALL channels\n");
}

TEST(ParseEvListListing, ShowsTimesSignedAndMasksUnsigned) {
    event_list list;
    zeb5_ev_entry *const entry = add_entry(list, 28);
    entry->min_ev_time = {0xFFFFFFFF, 0x80000000};
    entry->tmask = entry->priority = 0xFFFFFFFF;
    EXPECT_EQ(listing_of(&list.entries), "Entry[0]\n"
                                         "EVENT TYPE:\t28\n"
                                         "Trigger mask:\t0xffffffff (4294967295)\n"
                                         "Min event time:\t-1 sec -2147483648 usec\n"
                                         "Priority:\t0xffffffff (4294967295)\n"
                                         "Server Blocks: 0\n");
}

TEST(ParseEvListListing, IsEmptyForANullOrEmptyVector) {
    const event_list list;
    EXPECT_EQ(listing_of(nullptr), "");
    EXPECT_EQ(listing_of(&list.entries), "");
}

// Releasing. What is released is for the leak checkers to see; what is left alone can be used afterwards.

TEST(ParseEvListCleaning, LeavesANullOrEmptyVectorAsItIs) {
    std::vector<zeb5_ev_entry *> list;
    list.reserve(7);
    zeb5_clean_ev_list(nullptr);
    zeb5_clean_ev_list(&list);
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(list.capacity(), 7U);
}

TEST(ParseEvListCleaning, EmptiesTheVectorAndKeepsItsRoom) {
    event_list list;
    for (int type = 0; type < 20; ++type)
        add_block(add_entry(list, type), "A", {"c", "d"});
    const std::size_t room = list.entries.capacity();
    const captured seen = capture([&] { zeb5_clean_ev_list(&list.entries); });
    EXPECT_EQ(seen.out + seen.err, "");
    EXPECT_TRUE(list.entries.empty());
    EXPECT_EQ(list.entries.capacity(), room);
    zeb5_clean_ev_list(&list.entries); // and once more
}

TEST(ParseEvListCleaning, ReleasesWhatWasRead) {
    std::string document =
        "<BMR><EVENT><TYPE>5</TYPE><SBLOCK>A</SBLOCK><CHLIST><CHAN>c</CHAN><CHAN>d</CHAN></CHLIST>"
        "<SBLOCK>B</SBLOCK><CHLIST><CHAN>e</CHAN></CHLIST></EVENT></BMR>";
    std::vector<zeb5_ev_entry *> list;
    ASSERT_EQ(zeb5_parse_ev_list_read(document.data(), &list), 0);
    EXPECT_EQ(describe(list), "5 A(c,d) B(e)");
    zeb5_clean_ev_list(&list);
    EXPECT_TRUE(list.empty());
}

TEST(ParseEvListCleaning, AcceptsNullChannelNamesAndListsThatAreMissing) {
    event_list list;
    zeb5_ev_entry *const entry = add_entry(list, 5);
    add_block(entry, "A", {"c"})->ch_list->push_back(nullptr);
    delete std::exchange(add_block(entry, "B")->ch_list, nullptr);
    zeb5_clean_ev_list(&list.entries);
    EXPECT_TRUE(list.entries.empty());
}

TEST(ParseEvListCleaning, LeavesAnEmptyChannelListAlone) {
    event_list list;
    std::vector<char *> *const channels = add_block(add_entry(list, 5), "A")->ch_list;
    zeb5_clean_ev_list(&list.entries);
    EXPECT_TRUE(list.entries.empty());
    channels->push_back(nullptr);
    EXPECT_EQ(channels->size(), 1U);
    delete channels;
}

TEST(ParseEvListCleaning, LeavesAnEntryWithoutServerBlockListAlone) {
    event_list list;
    zeb5_ev_entry *const entry = add_entry(list, 5);
    delete std::exchange(entry->sb_list, nullptr);
    add_block(add_entry(list, 6), "A", {"c"});
    zeb5_clean_ev_list(&list.entries);
    EXPECT_TRUE(list.entries.empty());
    EXPECT_EQ(entry->evtype, 5);
    delete entry;
}

TEST(ParseEvListListing, PassesOverNullEntriesAndServerBlocks) {
    event_list list;
    add_block(add_entry(list, ZEB5_EV_IMAGE), "A", {"c"});
    const std::string expected = listing_of(&list.entries);
    zeb5_ev_sb_list *const block = list.entries[0]->sb_list->front();
    *list.entries[0]->sb_list = {nullptr, block};
    list.entries.insert(list.entries.begin(), nullptr);
    EXPECT_EQ(listing_of(&list.entries), expected.substr(0, 5) + "[1]" +
                                             expected.substr(8, expected.find("Server Blocks") - 8) +
                                             "Server Blocks: 2\nServer block[1]: 'A'\n"
                                             "Channels: 1\nChannel[0]:\t'c'\n");
    zeb5_clean_ev_list(&list.entries);
    EXPECT_TRUE(list.entries.empty());
}

TEST(ParseEvListListing, ShowsAllOfAServerBlockNameWhoseEndIsOverwritten) {
    event_list list;
    zeb5_ev_sb_list *const block = add_block(add_entry(list, ZEB5_EV_IMAGE), "A");
    std::memset(block->sb_list, 's', sizeof block->sb_list);
    const std::string seen = listing_of(&list.entries);
    EXPECT_NE(seen.find("Server block[0]: '" + std::string(sizeof block->sb_list, 's') + "'\n"), seen.npos);
}
