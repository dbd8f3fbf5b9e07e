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

TEST(XmlText, HasRoomForPartAfterPart) {
    char field[256];
    std::memset(field, 'x', sizeof field);
    const std::string text_line = "<TEXT>" + std::string(sizeof field, 'x') + "</TEXT>\n";
    const std::string number_line = "<NUMBER>-2147483648</NUMBER>\n";
    for (const std::size_t expected : {0u, 1'000'000u}) {
        xml_text out({}, expected);
        std::string plain;
        for (int part = 0; part < 100; ++part) {
            out.make_room();
            for (int i = 0; i < 15; ++i) {
                out.put(element<text_tag>(field));
                plain += text_line;
            }
            for (int i = 0; i < 20; ++i) {
                out.put(element<number_tag>(INT_MIN));
                plain += number_line;
            }
        }
        EXPECT_TRUE(out.take() == plain) << expected;
    }
}

} // namespace
