/// Texts of the XML library as the local code has them.

#include "steps/narrow_text.h"

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
    for (const narrow_case &c : narrow_cases) {
        EXPECT_EQ(narrower.narrow(c.text.c_str(), c.length), c.narrow);
        EXPECT_STREQ(zeb5::transcoded(zeb5::narrow(c.text.c_str(), c.length)).get(), c.narrow.c_str());
    }
}

/// Characters around the last one of ASCII, and characters of which one half looks like ASCII.
constexpr char16_t characters[] = {u'\x01',   u'\x7e',   u'\x7f',   u'\u0080', u'\u0081', u'\u00ff',
                                   u'\u0100', u'\u0141', u'\u2020', u'\u4100', u'\uff41', u'\ufffd'};

TEST(NarrowText, IsThatOfTheTranscoderWhereverACharacterIsNotAscii) {
    const xml_platform platform;
    zeb5::narrower narrower;
    for (const std::size_t length : {1u, 2u, 3u, 7u, 8u, 9u, 15u, 16u, 17u, 31u, 40u})
        for (std::size_t place = 0; place < length; ++place)
            for (const char16_t character : characters) {
                std::u16string text(length, u'x');
                text[place] = character;
                const std::string expected = zeb5::transcode(text.c_str()).get();
                EXPECT_EQ(narrower.narrow(text.c_str(), length), expected);
                EXPECT_EQ(zeb5::transcoded(zeb5::narrow(text.c_str(), length)).get(), expected);
            }
}

} // namespace
