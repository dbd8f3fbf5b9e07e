/// Two machines: the local code of one is not ASCII, as it has a yen sign in place of the backslash, like
/// JIS. The local code of the other is ASCII, but cannot express some texts. This program brings its own
/// transcoder, because such locales are not installed.

#include <cstring>
#include <string>

#include <dlfcn.h>
#include <langinfo.h>

#include <gtest/gtest.h>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLString.hpp>

#include "readers/feature_scan.h"
#include "steps/local_code.h"
#include "steps/narrow_text.h"
#include "support/descr_readers.h"
#include "support/lane_steps.h"
#include "support/locales.h"
#include "xml_platform.h"

namespace {
std::string made_up_code; // in place of the locale's character set
int transcoded_texts = 0;
} // namespace

char *nl_langinfo(nl_item item) noexcept {
    if (item == CODESET && !made_up_code.empty())
        return made_up_code.data();
    static const auto of_system = reinterpret_cast<char *(*)(nl_item)>(dlsym(RTLD_NEXT, "nl_langinfo"));
    return of_system(item);
}

XERCES_CPP_NAMESPACE_BEGIN

char *XMLString::transcode(const XMLCh *const text, MemoryManager *const memory) {
    const XMLSize_t length = stringLen(text);
    const std::string code = nl_langinfo(CODESET);
    const bool keeps_ascii = code == "UTF-8" || (code.starts_with("code") && code.back() % 2 == 0);
    ++transcoded_texts;
    if (keeps_ascii && indexOf(text, u'\u20AC') >= 0)
        return nullptr;
    char *const narrow = static_cast<char *>(memory->allocate(length + 1));
    for (XMLSize_t i = 0; i <= length; ++i)
        narrow[i] = keeps_ascii            ? static_cast<char>(text[i])
                    : text[i] == u'\u00A5' ? '\\'
                    : text[i] == u'\\'     ? '?'
                                           : static_cast<char>(text[i]);
    return narrow;
}

XERCES_CPP_NAMESPACE_END

namespace {

TEST(LocalCode, IsThatOfEveryText) {
    for (reader_form form : both_readers) {
        channel_list list;
        read_well(form,
                  "<CHANDESCRIPTIONS>"
                  "<CHANNEL><PROP>a long first one</PROP><NAME>x\\y</NAME></CHANNEL>"
                  "<CHANNEL><PROP>&#xA5;\\</PROP><NAME>plain</NAME></CHANNEL>"
                  "</CHANDESCRIPTIONS>",
                  list);
        ASSERT_EQ(list.records.size(), 2u);
        EXPECT_STREQ(list.records[0]->prop_name, "a long first one");
        EXPECT_STREQ(list.records[0]->daq_name, "x?y");
        EXPECT_STREQ(list.records[1]->prop_name, "\\?");
        EXPECT_STREQ(list.records[1]->daq_name, "plain");
    }
}

TEST(LocalCode, IsThatOfATextForItself) {
    const xml_platform platform;
    zeb5::narrower narrower;
    EXPECT_EQ(narrower.narrow(u"x\\y", 3), "x?y");
    EXPECT_STREQ(zeb5::transcoded(zeb5::narrow(u"x\\y", 3)).get(), "x?y");
}

/// Sixteen character sets are remembered, if their names are not too long; others are asked for each time.
TEST(LocalCode, IsRightForAnyNumberOfCharacterSets) {
    const xml_platform platform; // its start transcodes texts, too
    const auto code = [](int i) { return "code" + std::string(i < 38 ? 1 : 40, ' ') + std::to_string(i); };
    for (const int round : {1, 2, 3})
        for (int i = 0; i < 40; ++i) {
            made_up_code = code(i);
            EXPECT_EQ(zeb5::local_code_keeps_ascii(), i % 2 == 0) << i << ", round " << round;
        }
    transcoded_texts = 0;
    for (const int i : {0, 1, 39}) {
        made_up_code = code(i);
        EXPECT_EQ(zeb5::local_code_keeps_ascii(), i % 2 == 0) << i;
    }
    EXPECT_EQ(transcoded_texts, 1) << "the last one is not remembered";
    made_up_code.clear();
}

/// A reader to which the element b means nothing.
zeb5::reader_row rows_but_of_b(std::string_view name) {
    return name == "b" ? zeb5::reader_row{} : zeb5::reader_row{0, true};
}

TEST(LocalCode, MayHaveNothingForATextOfAPlainDocument) {
    const locale_in_use other("C.UTF-8");
    for (const char *const document : {"<r><a>1</a><b>\xE2\x82\xAC</b><a>2</a></r>",
                                       "<r><a>1</a><b><![CDATA[\xE2\x82\xAC]]></b><a>2</a></r>",
                                       "<r><a>1</a><b a='\xE2\x82\xAC' b='x'>2</b><a>3</a></r>"})
        for (const reader_form form : both_readers)
            for (const zeb5::row_finder rows : {every_row, rows_but_of_b}) {
                const steps_seen seen = lane_steps(form, WITH_LANE, document, rows);
                EXPECT_EQ(seen, lane_steps(form, WITHOUT_LANE, document, rows)) << document;
                EXPECT_EQ(seen.lane, zeb5::lane_end::LEFT_MIDWAY) << document;
            }
}

TEST(LocalCode, MayHaveNothingForATextOfACameraFile) {
    const locale_in_use other("C.UTF-8");
    for (const char *const document : {"<c><Float Name='\xE2\x82\xAC'/></c>",
                                       "<c><Float Name='a'><ToolTip>\xE2\x82\xAC</ToolTip></Float></c>"}) {
        const temporary_file file(document);
        std::vector<ZEB5GigEFeature *> none;
        EXPECT_EQ(zeb5::scan_features(zeb5::plain_file(file.path().c_str()), none),
                  zeb5::scan_result::NOT_PLAIN)
            << document;
        EXPECT_TRUE(none.empty()) << document;
    }
}

} // namespace
