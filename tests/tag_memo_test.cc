#include "tag_memo.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "xml_platform.h"

namespace {

/// Exactly as long as the name and its null, so that reading past them shows.
std::unique_ptr<XMLCh[]> name_of(const std::u16string &text) {
    std::unique_ptr<XMLCh[]> name(new XMLCh[text.size() + 1]());
    text.copy(name.get(), text.size());
    return name;
}

const std::u16string names[] = {
    u"A",
    u"B",
    u"ABC",
    u"PROP",
    u"PROPS",
    u"PRIP",
    u"NAMES",
    std::u16string(39, u'x'),
    std::u16string(40, u'x'), // no longer kept
    u"\u00E9",                // longer or shorter when it is narrow, or another character, as the locale says
    u"\u00E9a",
    u"abc\u00E9",
    u"\u4E2D",
    u"\u4E2D\u4E2D\u4E2D\u4E2D",
};

void expect_narrow(zeb5::tag_memo &memo, const std::u16string &text, zeb5::narrower &narrower) {
    const auto name = name_of(text);
    const std::string narrow = zeb5::transcode(name.get()).get();
    const zeb5::tag_name tag = memo.find(name.get(), 7, narrower);
    ASSERT_STREQ(tag.text, narrow.c_str());
    EXPECT_EQ(tag.length, narrow.size());
}

TEST(TagMemo, GivesEachNameOfOneNumberAsTheTranscoderDoes) {
    const xml_platform platform;
    zeb5::narrower narrower;
    for (const std::u16string &first : names)
        for (const std::u16string &second : names) {
            zeb5::tag_memo memo;
            for (const std::u16string *name : {&first, &first, &second, &first, &second, &second})
                expect_narrow(memo, *name, narrower);
        }
}

} // namespace
