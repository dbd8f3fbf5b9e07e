/// Tables that find the row of a tag.

#include "steps/tag_table.h"

#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace {

using zeb5::tag_row;
using zeb5::tag_table;

constexpr tag_row<int> rows[] = {
    {"A", 1},
    {"AB", 2},
    {"NAME", 3},
    {"SB_NAME", 4},
    {"CHANNELS", 5},
    {"CHANNELS1", 6},
    {"CHANDESCRIPTIONS", 7},
};
constexpr tag_table table{rows};

/// A name at the end of its memory: what is behind it must not be read.
struct lone_name {
    explicit lone_name(std::string_view name) : bytes(name.begin(), name.end()) {}
    operator std::string_view() const { return {bytes.data(), bytes.size()}; }

    std::vector<char> bytes;
};

TEST(TagTable, FindsEachOfItsTags) {
    for (int i = 0; i < 7; ++i) {
        const lone_name tag(rows[i].tag);
        EXPECT_EQ(table.row_of(tag), i) << rows[i].tag;
        EXPECT_EQ(table.action(i), rows[i].action) << rows[i].tag;
        ASSERT_NE(table.find(tag), nullptr) << rows[i].tag;
        EXPECT_EQ(*table.find(tag), rows[i].action) << rows[i].tag;
    }
}

TEST(TagTable, FindsNothingElse) {
    const char *const others[] = {"",
                                  "B",
                                  "a",
                                  "NAM",
                                  "NAMES",
                                  "SB_NAM",
                                  "CHANNEL",
                                  "CHANNELS2",
                                  "CHANNELS12",
                                  "CHANDESCRIPTION",
                                  "CHANDESCRIPTIONSX",
                                  "CHANDESCRIPTIONS and far more than sixteen"};
    for (const char *name : others) {
        EXPECT_EQ(table.row_of(lone_name(name)), -1) << '"' << name << '"';
        EXPECT_EQ(table.find(lone_name(name)), nullptr) << '"' << name << '"';
    }
    EXPECT_EQ(table.row_of({}), -1) << "no name at all";
}

TEST(TagTable, MakesTheSameKeyWhenCompiledAndWhenAsked) {
    const std::string name = "\xc3\xa4"
                             "CDEFGHIJKLMNO\xff";
    ASSERT_EQ(name.size(), 16u);
    for (std::size_t size = 1; size <= name.size(); ++size) {
        const lone_name tag(name.substr(0, size));
        EXPECT_EQ(zeb5::loaded_key_of(tag), zeb5::key_of(tag)) << size;
    }
}

} // namespace
