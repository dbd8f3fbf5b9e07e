#include "tag_table.h"

#include <cstring>
#include <string>

#include <gtest/gtest.h>

namespace {

using zeb5::tag_name;
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

/// What the table says of a name; -1 for none.
int found(const std::string &name) {
    char text[48] = {};
    std::memcpy(text, name.data(), name.size());
    const int *action = table.find(tag_name{text, name.size()});
    return action ? *action : -1;
}

TEST(TagTable, FindsEachOfItsTags) {
    for (const tag_row<int> &row : rows)
        EXPECT_EQ(found(std::string(row.tag)), row.action) << row.tag;
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
    for (const char *name : others)
        EXPECT_EQ(found(name), -1) << '"' << name << '"';
}

} // namespace
