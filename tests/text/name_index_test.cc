/// An index of names in a list whose records may be renamed.

#include "text/name_index.h"

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

struct record {
    char name[256];
};

using name_index = zeb5::name_index<record, &record::name>;

struct record_list {
    record *add(const std::string &name) {
        owned.push_back(std::make_unique<record>());
        zeb5::copy_text(owned.back()->name, name);
        records.push_back(owned.back().get());
        return records.back();
    }

    /// Where a name is found; -1 when it was added.
    long find_or_add(name_index &names, const std::string &name) {
        const record *const found = names.find_or_add(name, [&] { add(name); });
        for (std::size_t i = 0; i < records.size(); ++i)
            if (records[i] == found)
                return static_cast<long>(i);
        return -1;
    }

    std::vector<std::unique_ptr<record>> owned;
    std::vector<record *> records;
};

/// Names of 1 to 15 characters, all of them different.
std::string nth_name(int n) { return std::string(static_cast<std::size_t>(n % 12), 'n') + std::to_string(n); }

TEST(NameIndex, GrowsWithTheListAndFindsEveryName) {
    constexpr int count = 3000;
    for (const std::size_t expected : {0u, 100u, 3000u}) {
        record_list list;
        name_index names(list.records, expected);
        for (int n = 0; n < count; ++n)
            ASSERT_EQ(list.find_or_add(names, nth_name(n)), -1) << nth_name(n);
        for (int n = 0; n < count; ++n)
            ASSERT_EQ(list.find_or_add(names, nth_name(n)), n) << nth_name(n);
        EXPECT_EQ(list.records.size(), static_cast<std::size_t>(count));
    }
}

TEST(NameIndex, FindsTheFirstOfAName) {
    record_list list;
    name_index names(list.records);
    list.add("twice");
    list.add("once");
    list.add("twice");
    EXPECT_TRUE(names.add(0));
    EXPECT_TRUE(names.add(1));
    EXPECT_FALSE(names.add(2));
    EXPECT_EQ(list.find_or_add(names, "twice"), 0);
    EXPECT_EQ(list.find_or_add(names, "once"), 1);
}

TEST(NameIndex, KnowsOfALongNameWhatTheFieldHolds) {
    const std::string most(255, 'x');
    record_list list;
    name_index names(list.records);
    EXPECT_EQ(list.find_or_add(names, most + "y"), -1);
    EXPECT_EQ(list.find_or_add(names, most), 0);
    EXPECT_EQ(list.find_or_add(names, most + "y"), -1);
    EXPECT_EQ(list.find_or_add(names, most), 0);
}

TEST(NameIndex, FindsAChangedNameOnceItIsAddedAgain) {
    record_list list;
    name_index names(list.records);
    list.add("old");
    names.add(0);
    zeb5::copy_text(list.records[0]->name, "new");
    names.add(0);
    EXPECT_EQ(list.find_or_add(names, "new"), 0);
    EXPECT_EQ(list.find_or_add(names, "old"), -1);
    EXPECT_EQ(list.find_or_add(names, "old"), 1);
}

TEST(NameIndex, FindsEveryRecordAfterMuchRenaming) {
    record_list list;
    name_index names(list.records);
    list.find_or_add(names, "other");
    for (int n = 1; n <= 1000; ++n) { // each is named "a" at first
        ASSERT_EQ(list.find_or_add(names, "a"), -1) << n;
        ASSERT_EQ(list.find_or_add(names, "a"), n);
        zeb5::copy_text(list.records.back()->name, nth_name(n));
        ASSERT_TRUE(names.add(static_cast<std::size_t>(n)));
    }
    for (int n = 1; n <= 1000; ++n)
        ASSERT_EQ(list.find_or_add(names, nth_name(n)), n);
    EXPECT_EQ(list.find_or_add(names, "other"), 0);
    zeb5::copy_text(list.records[7]->name, "a");
    names.add(7);
    EXPECT_EQ(list.find_or_add(names, "a"), 7);
    EXPECT_EQ(list.find_or_add(names, nth_name(7)), -1);
}

} // namespace
