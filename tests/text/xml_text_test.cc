/// Elements that are appended to a growing text.

#include "text/xml_text.h"

#include <climits>
#include <cstring>
#include <string>

#include <gtest/gtest.h>

namespace {

using zeb5::element;
using zeb5::xml_text;

constexpr zeb5::element_tags text_tag("TEXT");
constexpr zeb5::element_tags number_tag("NUMBER");

TEST(XmlText, HasRoomForCallAfterCall) {
    char field[256];
    std::memset(field, 'x', sizeof field);
    const std::string text(sizeof field, 'x');
    const std::string long_text(5000, 'l');
    const std::string line =
        "<TEXT>" + text + "</TEXT>\n<NUMBER>-2147483648</NUMBER>\n<TEXT>" + text + "</TEXT>\n";
    for (const std::size_t expected : {0u, 1'000'000u}) {
        xml_text out({}, expected);
        std::string plain;
        for (int i = 0; i < 2000; ++i) {
            out.put(element<text_tag>(field), element<number_tag>(INT_MIN), element<text_tag>(field));
            plain += line;
            for (int j = 0; j < i % 7; ++j) {
                out.open(text_tag);
                out.put_float(number_tag, -3e38F, "%f");
                out.close(text_tag);
                out.line_end();
                plain +=
                    "<TEXT>\n<NUMBER>-300000000549775575777803994281145270272.000000</NUMBER>\n</TEXT>\n\n";
            }
            if (i % 100 == 0) {
                out.put(long_text);
                plain += long_text;
            }
        }
        EXPECT_TRUE(out.take() == plain) << expected;
    }
}

} // namespace
