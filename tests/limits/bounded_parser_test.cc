/// A parser that refuses a document: whatever the parser is doing then, it survives.

#include <gtest/gtest.h>

#include "support/read_apart.h"
#include "support/repeated_text.h"

namespace {

/// What a parser may be doing when it is refused: each document has one thing done again and again, and its
/// length moves the place of the refusal.
TEST(BoundedParser, RefusesWhereTheParserCopesWithIt) {
    const std::string redeclared = times(3000, "n"), names = times(199, ",b");
    const std::string declarations[] = {
        times(2, "<!ENTITY " + redeclared + " \"\">"),
        "<!ELEMENT a (b" + names + ")>",
        "<!ATTLIST a b CDATA \"x\"><!ATTLIST a b (c|d) \"c\">",
    };
    const reader_row &channels = every_reader[0], &camera = every_reader[12];
    ASSERT_EQ(channels.kind, CHANNELS);
    ASSERT_EQ(camera.kind, CAMERA);
    for (const std::string &text : declarations)
        for (std::size_t padding = 0; padding < 400; padding += 40) {
            const std::string hostile =
                ("<!DOCTYPE ROOT [<!ELEMENT ROOT ANY><!--" + times(padding, "c") + "--><!ENTITY % e '" +
                 text + "'><!ENTITY % f '" + times(100, "&#37;e;") + "'>" + times(300, "%f;") + "]><ROOT/>");
            for (const reader_row *const reader : {&channels, &camera})
                EXPECT_EQ(read_apart(*reader, hostile).end, REFUSED) << reader->name << padding;
        }
}

} // namespace
