/// The merge of one channel record into another, with extend_channel_description(): fields and bits.

#include "parse_chan_descr.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "support/capture.h"
#include "support/channel_records.h"

namespace {

/// Two records of one property, and the merge of one into the other.
struct merge_pair {
    merge_pair() : in(records.add(make_channel("ORVIN/A"))), from(records.add(make_channel("ORVIN/A"))) {}

    /// Merges, requires that it was done, that `from` is as before and that no sub-record is shared. Returns
    /// what was written to standard output.
    std::string merge(bool force) {
        const std::string before = describe(*from);
        bool refused = true;
        const captured seen = capture([&] { refused = extend_channel_description(in, from, force); });
        EXPECT_FALSE(refused);
        EXPECT_EQ(seen.err, "");
        EXPECT_EQ(describe(*from), before) << "the source was changed";
        for (const bit_descr *bit : in->bits)
            EXPECT_EQ(std::count(from->bits.begin(), from->bits.end(), bit), 0) << "a shared bit";
        for (const dim_descr *dim : in->dims)
            EXPECT_EQ(std::count(from->dims.begin(), from->dims.end(), dim), 0) << "a shared dimension";
        return seen.out;
    }

    channel_list records;
    chan_descr_2010 *in;
    chan_descr_2010 *from;
};

const bool both_forms[] = {false, true};

// Refusals

TEST(ChanDescrMerge, RefusesNullRecords) {
    for (bool force : both_forms) {
        merge_pair pair;
        pair.from->stream = 7;
        const std::string in = describe(*pair.in), from = describe(*pair.from);
        EXPECT_TRUE(extend_channel_description(nullptr, pair.from, force));
        EXPECT_TRUE(extend_channel_description(pair.in, nullptr, force));
        EXPECT_TRUE(extend_channel_description(nullptr, nullptr, force));
        EXPECT_EQ(describe(*pair.in), in);
        EXPECT_EQ(describe(*pair.from), from);
    }
}

TEST(ChanDescrMerge, RefusesDifferentPropertiesAndChangesNothing) {
    for (const char *prop : {"ORVIN/B", "orvin/a", "ORVIN/", "ORVIN/A ", ""}) {
        for (bool force : both_forms) {
            merge_pair pair;
            set_text(pair.from->prop_name, prop);
            pair.from->stream = 7;
            set_text(pair.from->daq_name, "name");
            add_bit(pair.from, 1);
            add_stat(add_dim(pair.from, 1), 1);
            add_bit(pair.in, 2);
            const std::string in = describe(*pair.in), from = describe(*pair.from);
            EXPECT_TRUE(extend_channel_description(pair.in, pair.from, force)) << prop;
            EXPECT_EQ(describe(*pair.in), in);
            EXPECT_EQ(describe(*pair.from), from);
        }
    }
}

TEST(ChanDescrMerge, LeavesARecordMergedIntoItselfAsItIs) {
    for (bool force : both_forms) {
        merge_pair pair;
        add_bit(pair.in, 1, "one");
        add_stat(add_dim(pair.in, 2, "two"), 3, "three");
        const std::string before = describe(*pair.in);
        EXPECT_FALSE(extend_channel_description(pair.in, pair.in, force));
        EXPECT_EQ(describe(*pair.in), before);
    }
}

TEST(ChanDescrMerge, MergesTwoRecordsWithoutAProperty) {
    merge_pair pair;
    set_text(pair.in->prop_name, "");
    set_text(pair.from->prop_name, "");
    pair.from->stream = 7;
    pair.merge(false);
    EXPECT_EQ(pair.in->stream, 7);
}

// Numbers

struct number_field {
    const char *name;
    void (*set)(chan_descr_2010 &, int64_t);
};

#define NUMBER_FIELD(member)                                                                                 \
    {                                                                                                        \
#member, [](chan_descr_2010 & record,                                                                \
                    int64_t value) { record.member = static_cast<decltype(record.member)>(value); }          \
    }

const number_field zero_is_unset[] = {NUMBER_FIELD(stream), NUMBER_FIELD(ev_type),  NUMBER_FIELD(count),
                                      NUMBER_FIELD(dtype),  NUMBER_FIELD(max_size), NUMBER_FIELD(set_point)};
const number_field key_field = NUMBER_FIELD(db_key);

struct number_row {
    int64_t in, from;
    int64_t filled; // without force
    int64_t forced;
};

void check_numbers(const number_field &field, const number_row &row) {
    for (bool force : both_forms) {
        merge_pair pair;
        field.set(*pair.in, row.in);
        field.set(*pair.from, row.from);
        chan_descr_2010 expected = *pair.in; // no sub-records, so a flat copy owns nothing
        field.set(expected, force ? row.forced : row.filled);
        EXPECT_EQ(pair.merge(force), "");
        EXPECT_EQ(describe(*pair.in), describe(expected))
            << field.name << ": " << row.in << " from " << row.from << " force " << force;
    }
}

TEST(ChanDescrMerge, FillsOrOverwritesNumbersOfWhichZeroIsUnset) {
    const number_row rows[] = {
        {0, 0, 0, 0}, {0, 7, 7, 7}, {5, 0, 5, 5}, {5, 7, 5, 7}, {0, 1, 1, 1}, {3, 3, 3, 3}, {5, 1, 5, 1},
    };
    for (const number_field &field : zero_is_unset)
        for (const number_row &row : rows)
            check_numbers(field, row);
}

TEST(ChanDescrMerge, TakesNegativeNumbersForSet) {
    const number_row rows[] = {{0, -7, -7, -7}, {-5, 0, -5, -5}, {-5, 7, -5, 7}, {5, -7, 5, -7}};
    for (const number_field &field : zero_is_unset) {
        if (!strcmp(field.name, "ev_type") || !strcmp(field.name, "dtype"))
            continue; // masks have no sign
        for (const number_row &row : rows)
            check_numbers(field, row);
    }
}

TEST(ChanDescrMerge, DoesNotCombineMasks) {
    const number_row row = {0x80000001, 0xf0, 0x80000001, 0xf0};
    check_numbers(zero_is_unset[1], row);
    check_numbers(zero_is_unset[3], row);
}

TEST(ChanDescrMerge, TakesKeysBelowOneForUnset) {
    const number_row rows[] = {
        {-1, 7, 7, 7},  {0, 7, 7, 7},     {-5, 7, 7, 7},    {1, 7, 1, 7},     {5, 7, 5, 7},
        {5, 0, 5, 5},   {5, -1, 5, 5},    {5, 1, 5, 1},     {1, 0, 1, 1},     {-1, 0, 0, -1},
        {0, -1, -1, 0}, {-5, -1, -1, -5}, {-1, -5, -5, -1}, {-1, -1, -1, -1},
    };
    for (const number_row &row : rows)
        check_numbers(key_field, row);
}

// Texts

struct text_field {
    const char *name;
    size_t size;
    char *(*of)(chan_descr_2010 &);
};

#define TEXT_FIELD(member)                                                                                   \
    {                                                                                                        \
#member, sizeof(chan_descr_2010::member), [](chan_descr_2010 & record) { return record.member; }     \
    }

const text_field text_fields[] = {TEXT_FIELD(daq_name), TEXT_FIELD(prop_desc), TEXT_FIELD(units),
                                  TEXT_FIELD(sb_name), TEXT_FIELD(subsystem)};

void check_text(const text_field &field, const std::string &in, const std::string &from,
                const std::string &filled, const std::string &forced) {
    for (bool force : both_forms) {
        merge_pair pair;
        snprintf(field.of(*pair.in), field.size, "%s", in.c_str());
        snprintf(field.of(*pair.from), field.size, "%s", from.c_str());
        chan_descr_2010 expected = *pair.in;
        snprintf(field.of(expected), field.size, "%s", force ? forced.c_str() : filled.c_str());
        EXPECT_EQ(pair.merge(force), "");
        EXPECT_EQ(describe(*pair.in), describe(expected))
            << field.name << ": '" << in << "' from '" << from << "' force " << force;
    }
}

TEST(ChanDescrMerge, FillsOrOverwritesTexts) {
    for (const text_field &field : text_fields) {
        const std::string longest(field.size - 1, 'x'), shorter(field.size - 2, 'y');
        check_text(field, "", "", "", "");
        check_text(field, "", "new", "new", "new");
        check_text(field, "old", "", "old", "old");
        check_text(field, "old", "new", "old", "new");
        check_text(field, "", longest, longest, longest);
        check_text(field, "old", longest, "old", longest);
        check_text(field, longest, "new", longest, "new");
        check_text(field, longest, shorter, longest, shorter);
    }
}

TEST(ChanDescrMerge, LooksOnlyAtTheFirstCharacterOfAText) {
    for (const text_field &field : text_fields) {
        merge_pair pair;
        strcpy(field.of(*pair.in) + 1, "left over");
        strcpy(field.of(*pair.from), "new");
        pair.merge(false);
        EXPECT_STREQ(field.of(*pair.in), "new") << field.name;
    }
}

// A source whose subsystem has lost its NUL runs on behind the record: what it is copied to must not.
TEST(ChanDescrMerge, KeepsTheBoundOfTheSubsystem) {
    struct guarded_record {
        chan_descr_2010 record;
        char guard[16] = {};
    };
    for (bool force : both_forms) {
        guarded_record in, from;
        char *text =
            reinterpret_cast<char *>(&from) + (from.record.subsystem - reinterpret_cast<char *>(&from));
        std::fill(text, from.guard + 4, 's');
        EXPECT_FALSE(extend_channel_description(&in.record, &from.record, force));
        EXPECT_EQ(quoted(in.record.subsystem), '\'' + std::string(63, 's') + '\'');
        EXPECT_EQ(std::string(in.guard, sizeof(in.guard)), std::string(sizeof(in.guard), '\0'));
    }
}

// Bits

/// One letter says where a description came from.
void add_bits(chan_descr_2010 *channel, const std::vector<int> &bits, const char *origin) {
    for (int bit : bits)
        add_bit(channel, bit, origin, origin);
}

std::string bits_of(const chan_descr_2010 &channel) {
    std::string text = std::to_string(channel.nbits) + ':';
    for (const bit_descr *bit : channel.bits)
        text += ' ' + std::to_string(bit->bit) + bit->bit_name + bit->bit_desc;
    return text;
}

TEST(ChanDescrMerge, AddsMissingBitsOrReplacesAllBits) {
    const struct {
        std::vector<int> in, from;
        const char *filled, *forced;
    } rows[] = {
        {{}, {}, "0:", "0:"},
        {{}, {2, 1}, "2: 2ff 1ff", "2: 2ff 1ff"},
        {{0, 2}, {}, "2: 0ii 2ii", "2: 0ii 2ii"},
        {{0, 2}, {1, 2}, "3: 0ii 2ii 1ff", "2: 1ff 2ff"},
        {{0, 2}, {5}, "3: 0ii 2ii 5ff", "1: 5ff"},
        {{0, 1}, {1, 0}, "2: 0ii 1ii", "2: 1ff 0ff"},
        {{3, 3}, {3, 4}, "3: 3ii 3ii 4ff", "2: 3ff 4ff"},
        {{-1}, {-1, 31}, "2: -1ii 31ff", "2: -1ff 31ff"},
        // twice the same number: into an empty record both go, beside others the first one only
        {{}, {6, 6}, "2: 6ff 6ff", "2: 6ff 6ff"},
        {{0}, {6, 6}, "2: 0ii 6ff", "2: 6ff 6ff"},
    };
    for (const auto &row : rows) {
        for (bool force : both_forms) {
            merge_pair pair;
            add_bits(pair.in, row.in, "i");
            add_bits(pair.from, row.from, "f");
            EXPECT_EQ(pair.merge(force), "");
            EXPECT_EQ(bits_of(*pair.in), force ? row.forced : row.filled) << "force " << force;
        }
    }
}

TEST(ChanDescrMerge, DecidesAboutBitsByTheCountsAndWalksTheVectors) {
    const struct {
        std::vector<int> in;
        int in_count;
        std::vector<int> from;
        int from_count;
        const char *filled, *forced;
    } rows[] = {
        {{3}, 0, {3, 4}, 2, "2: 3ii 3ff 4ff", "2: 3ii 3ff 4ff"}, // what is hidden stays, clones follow
        {{3}, 1, {4}, 0, "1: 3ii", "1: 3ii"},                    // the source claims to have none
        {{3}, 5, {3, 4}, 9, "6: 3ii 4ff", "2: 3ff 4ff"},
        {{}, 4, {3}, 1, "5: 3ff", "1: 3ff"},
        {{3}, 1, {}, 2, "1: 3ii", "0:"},
        {{3}, -1, {4}, -1, "0: 3ii 4ff", "1: 4ff"},
    };
    for (const auto &row : rows) {
        for (bool force : both_forms) {
            merge_pair pair;
            add_bits(pair.in, row.in, "i");
            add_bits(pair.from, row.from, "f");
            pair.in->nbits = row.in_count;
            pair.from->nbits = row.from_count;
            EXPECT_EQ(pair.merge(force), "");
            EXPECT_EQ(bits_of(*pair.in), force ? row.forced : row.filled) << "force " << force;
            for (chan_descr_2010 *channel : {pair.in, pair.from})
                channel->nbits = static_cast<int>(channel->bits.size()); // so that all are released
        }
    }
}

TEST(ChanDescrMerge, PassesOverNullBitsOfTheSource) {
    for (bool force : both_forms) {
        merge_pair pair;
        add_bits(pair.in, {0, 2}, "i");
        add_bits(pair.from, {2, 5}, "f");
        std::vector<bit_descr *> &bits = pair.from->bits;
        bits = {nullptr, bits[0], nullptr, bits[1], nullptr};
        const captured seen =
            capture([&] { EXPECT_FALSE(extend_channel_description(pair.in, pair.from, force)); });
        EXPECT_EQ(seen.out + seen.err, "");
        EXPECT_EQ(bits_of(*pair.in), force ? "2: 2ff 5ff" : "3: 0ii 2ii 5ff") << "force " << force;
    }
}

} // namespace
