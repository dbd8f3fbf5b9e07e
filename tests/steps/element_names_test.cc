/// The names of a document's elements. Each name has one entry. It recognises the name and knows the name
/// that follows it.

#include "steps/element_names.h"

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using zeb5::element_name;
using zeb5::element_names;
using zeb5::reader_row;

/// Whether a name is recognised at once in what begins with `text`.
bool is_quick(const element_name &name, const std::string &text) {
    return name.quickly_begins((text + std::string(zeb5::block_bytes, '>')).c_str());
}

std::vector<std::string> asked_rows;

reader_row row_of(std::string_view name) {
    asked_rows.emplace_back(name);
    return {static_cast<int>(name.size()), name.size() > 2};
}

TEST(ElementNames, HaveOneEntryEach) {
    element_names names;
    std::vector<element_name *> entries;
    for (int i = 0; i < 128; ++i) {
        const std::string name = "n" + std::to_string(i);
        entries.push_back(names.find(name));
        ASSERT_TRUE(entries.back());
        EXPECT_EQ(entries.back()->text(), name);
    }
    for (int i = 0; i < 128; ++i)
        EXPECT_EQ(names.find("n" + std::to_string(i)), entries[static_cast<std::size_t>(i)]);
    EXPECT_FALSE(names.find("n128")) << "there is no room";
}

TEST(ElementNames, HaveAMostLength) {
    element_names names;
    EXPECT_TRUE(names.find(std::string(31, 'n')));
    EXPECT_FALSE(names.find(std::string(32, 'n')));
}

TEST(ElementNames, AreRecognisedAtOnceUpTo16Bytes) {
    element_names names;
    for (std::size_t length = 1; length <= 31; ++length) {
        const std::string name = std::string(length - 1, 'n') + 'm';
        EXPECT_EQ(is_quick(*names.find(name), name), length <= 16) << name;
        EXPECT_FALSE(is_quick(*names.find(name), name.substr(0, length - 1))) << name;
        EXPECT_FALSE(is_quick(*names.find(name), 'x' + name.substr(1))) << name;
        EXPECT_TRUE(names.find(name)->begins((name + '>').c_str())) << name;
        EXPECT_FALSE(names.find(name)->begins(std::string(length, 'n').c_str())) << name;
    }
}

TEST(ElementNames, AreNotRecognisedAtOnceOnceTheyAreSlow) {
    element_names names;
    element_name &name = *names.find("n");
    name.make_slow();
    EXPECT_FALSE(is_quick(name, "n"));
    EXPECT_TRUE(name.begins("n>"));
}

TEST(ElementNames, KnowTheLastTwoThatFollowed) {
    element_names names;
    element_name &root = *names.find("r"), &a = *names.find("a"), &b = *names.find("b"),
                 &c = *names.find("c");
    const auto next = [&](const char *text) {
        return a.next_at((text + std::string(zeb5::block_bytes, '>')).c_str());
    };
    EXPECT_EQ(next("r"), &root) << "a guess";
    EXPECT_FALSE(next("b"));
    a.set_next(&b);
    EXPECT_EQ(next("b"), &b);
    EXPECT_EQ(next("r"), &root);
    EXPECT_EQ(next("b"), &b);
    a.set_next(&c);
    a.set_next(&c);
    EXPECT_EQ(next("c"), &c);
    EXPECT_EQ(next("b"), &b);
    EXPECT_FALSE(next("r"));
    EXPECT_FALSE(next("x"));
}

TEST(ElementNames, HaveTheRowsOfTheReader) {
    const auto names = std::make_unique<element_names>();
    for (const char *const name : {"a", "bb", "ccc"}) {
        EXPECT_EQ(names->find(name)->row.number, reader_row::none) << "the root comes before the reader";
        EXPECT_TRUE(names->find(name)->row.acts_alone);
    }
    asked_rows.clear();
    names->set_rows(row_of);
    EXPECT_EQ(asked_rows, (std::vector<std::string>{"a", "bb", "ccc"}));
    for (const char *const name : {"a", "bb", "ccc", "dddd"}) {
        EXPECT_EQ(names->find(name)->row.number, static_cast<int>(std::string(name).size()));
        EXPECT_EQ(names->find(name)->row.acts_alone, std::string(name).size() > 2);
    }
    EXPECT_EQ(asked_rows.size(), 4u) << "each name is asked for once";
}

} // namespace
