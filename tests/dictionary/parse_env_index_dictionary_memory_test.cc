/// What the readers of env index dictionaries do when there is no memory for an entry. The program is linked
/// with --wrap=malloc, so that this file answers for the library's own calls.

#include <cstdlib>
#include <set>

#include <gtest/gtest.h>

#include "support/env_dictionary_readers.h"

namespace {

/// Calls of malloc() for an entry, counted from 1 while `entry_size` is set, and the ones that fail.
std::size_t entry_size = 0;
int calls = 0;
std::set<int> failing;

} // namespace

extern "C" {
void *__real_malloc(std::size_t size);
void *__wrap_malloc(std::size_t size) {
    if (size == entry_size && failing.count(++calls) > 0)
        return nullptr;
    return __real_malloc(size);
}
}

namespace {

template <class Layout> class ParseEnvIndexDictionaryMemory : public testing::Test {};

struct outcome {
    int result;
    std::string out, entries;
    int calls;
};

template <class Layout>
outcome read_with_failures(reader_form form, const std::string &body, std::set<int> which) {
    dictionary<Layout> list;
    calls = 0;
    failing = std::move(which);
    entry_size = sizeof(typename Layout::entry);
    const read_outcome seen =
        read_dictionary<Layout>(form, "<ENVINDEXDICT>" + body + "</ENVINDEXDICT>", &list.entries);
    entry_size = 0;
    EXPECT_EQ(seen.err, "");
    return {seen.result, seen.out, describe(list.entries), calls};
}

std::string channel(int number) {
    const std::string text = std::to_string(number);
    return "<CHANNEL><DABS>" + text + "</DABS><INDEX>" + text + "</INDEX><PROP>p" + text + "</PROP><DREL>" +
           text + "</DREL></CHANNEL>";
}

} // namespace

TYPED_TEST_SUITE(ParseEnvIndexDictionaryMemory, both_layouts);

TYPED_TEST(ParseEnvIndexDictionaryMemory, AChannelWithoutMemoryIsReportedAndSkipped) {
    const std::string line = std::string("Failed to allocate memory for ") + TypeParam::entry_name + "\n";
    const struct {
        std::set<int> failing;
        std::string out, entries;
    } rows[] = {
        {{}, "", "1 'p1' 1 1; 2 'p2' 2 2; 3 'p3' 3 3"},
        {{1}, line, "2 'p2' 2 2; 3 'p3' 3 3"},
        {{2}, line, "1 'p1' 1 1; 3 'p3' 3 3"},
        {{3}, line, "1 'p1' 1 1; 2 'p2' 2 2"},
        {{1, 2}, line + line, "3 'p3' 3 3"},
        {{1, 2, 3}, line + line + line, ""},
    };
    for (reader_form form : both_readers)
        for (const auto &row : rows) {
            const outcome seen =
                read_with_failures<TypeParam>(form, channel(1) + channel(2) + channel(3), row.failing);
            EXPECT_EQ(seen.result, 0);
            EXPECT_EQ(seen.out, row.out);
            EXPECT_EQ(seen.entries, row.entries);
            EXPECT_EQ(seen.calls, 3);
        }
}

TYPED_TEST(ParseEnvIndexDictionaryMemory, AnEntryThatWasNeverListedIsUsedAgain) {
    const std::string incomplete = "<CHANNEL><PROP>a</PROP><DABS>1</DABS></CHANNEL>";
    for (reader_form form : both_readers) {
        const outcome seen = read_with_failures<TypeParam>(
            form, incomplete + incomplete + channel(1) + incomplete + channel(2) + incomplete, {});
        EXPECT_EQ(seen.result, 0);
        EXPECT_EQ(seen.entries, "1 'p1' 1 1; 2 'p2' 2 2");
        EXPECT_EQ(seen.calls, 3); // the third one was left over
    }
}

TYPED_TEST(ParseEnvIndexDictionaryMemory, AFailureForgetsWhatWasSeen) {
    const std::string line = std::string("Failed to allocate memory for ") + TypeParam::entry_name + "\n";
    for (reader_form form : both_readers) {
        // the first entry has its name still seen when the second one fails
        const outcome seen = read_with_failures<TypeParam>(
            form, "<CHANNEL><PROP>a</PROP><INDEX>1</INDEX></CHANNEL><CHANNEL><INDEX>2</INDEX></CHANNEL>",
            {2});
        EXPECT_EQ(seen.result, 0);
        EXPECT_EQ(seen.out, line);
        EXPECT_EQ(seen.entries, "1 'a'");
    }
}
