#include "narrow_text.h"

#include <string>

#include <gtest/gtest.h>

#include "xml_platform.h"

namespace {

struct narrow_case {
    std::u16string text;
    std::size_t length; // what is said of it
    std::string narrow;
};

const narrow_case narrow_cases[] = {
    {u"", 0, ""},
    {u"abc", 3, "abc"},
    {u"abcd", 4, "abcd"},
    {u"abcdefg", 7, "abcdefg"},
    {u"abcdefgh", 8, "abcdefgh"},
    {u"abcdefghijk", 11, "abcdefghijk"},
    {u"abcdefghijklmnop", 16, "abcdefghijklmnop"},
    {std::u16string(200, u'x'), 200, std::string(200, 'x')},
    {u"abc", 0, "abc"}, // it goes on behind its length
    {u"abcdefghijk", 3, "abcdefghijk"},
    {u"abcdefghijk", 8, "abcdefghijk"},
    {std::u16string(u"ab\0cdefghijk", 12), 12, "ab"},
    {std::u16string(u"abcdefghij\0k", 12), 12, "abcdefghij"},
};

TEST(NarrowText, EndsWhereTheTextDoesWhateverItsLengthIsSaidToBe) {
    const xml_platform platform;
    zeb5::narrower narrower;
    zeb5::narrow_buffer buffer;
    for (const narrow_case &c : narrow_cases) {
        EXPECT_EQ(narrower.narrow(c.text.c_str(), c.length, buffer), c.narrow);
        EXPECT_EQ(buffer.size(), c.narrow.size()) << c.narrow;
    }
}

} // namespace
