/// Lines and columns of a text.

#include <gtest/gtest.h>

#include "words/text_places.h"

namespace {

TEST(TextPlaces, CountLinesAsXmlDoesAndCharactersAsEditorsDo) {
    const std::string text = "a\xC3\xA4z\r\nb\rc\n\n\xE2\x82\xAC.";
    struct placed {
        std::size_t offset, line, column;
    };
    const placed cases[] = {{0, 1, 1}, {1, 1, 2},  {3, 1, 3},  {6, 2, 1},  {7, 2, 2},
                            {8, 3, 1}, {10, 4, 1}, {11, 5, 1}, {14, 5, 2}, {15, 5, 3}};
    text_places places(text);
    for (const placed &one : cases) {
        const text_place place = places.place_of(one.offset);
        EXPECT_EQ(std::to_string(place.line) + ":" + std::to_string(place.column),
                  std::to_string(one.line) + ":" + std::to_string(one.column))
            << one.offset;
        EXPECT_EQ(offset_of(text, place), one.offset);
    }
    EXPECT_EQ(places.place_of(0).line, 1U) << "places may be asked for in any order";
    EXPECT_EQ(offset_of(text, {1, 99}), 4U) << "the end of the line";
    EXPECT_EQ(offset_of(text, {99, 1}), text.size());
}

} // namespace
