/// A machine whose local code is not ASCII: it has a yen sign where ASCII has the backslash, as JIS does. The
/// transcoder is this program's own here, as no such locale is at hand.

#include <string>

#include <gtest/gtest.h>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLString.hpp>

#include "descr_readers.h"
#include "narrow_text.h"
#include "xml_platform.h"

XERCES_CPP_NAMESPACE_BEGIN

char *XMLString::transcode(const XMLCh *const text, MemoryManager *const memory) {
    const XMLSize_t length = stringLen(text);
    char *const narrow = static_cast<char *>(memory->allocate(length + 1));
    for (XMLSize_t i = 0; i <= length; ++i)
        narrow[i] = text[i] == u'\u00A5' ? '\\' : text[i] == u'\\' ? '?' : static_cast<char>(text[i]);
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

} // namespace
