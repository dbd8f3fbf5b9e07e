/// The XML declaration of a document and its date line.

#include "document_header.h"

#include <algorithm>
#include <cstring>
#include <ctime>
#include <limits>
#include <string>

#include <gtest/gtest.h>

namespace {

constexpr size_t isodate_room = 40;

struct date_case {
    time_t time;
    const char *expect; // in Kathmandu
};
const date_case date_cases[] = {
    {1625123709, "2021-07-01T13:00:09"}, // 5 h 45 min ahead
    {1625084099, "2021-07-01T01:59:59"}, // still the day before in Greenwich
    {1735582499, "2024-12-30T23:59:59"},
    {1735582500, "2024-12-31T00:00:00"},
    {1709144100, "2024-02-29T00:00:00"}, // a leap day
    {0, "1970-01-01T05:30:00"},          // 5 h 30 min ahead until 1986
    {-1, "1970-01-01T05:29:59"},
    {253402280100, "10000-01-01T00:00:00"},
    {std::numeric_limits<time_t>::max(), ""}, // its year does not fit into a number
};

TEST(DocumentHeaderIsoDate, IsLocalTime) {
    for (const auto &c : date_cases) {
        time_t time = c.time;
        char text[isodate_room];
        create_isodate(text, &time);
        EXPECT_STREQ(text, c.expect);
        EXPECT_EQ(time, c.time);
    }
}

TEST(DocumentHeaderIsoDate, TakesTwentyBytesOfTheBuffer) {
    time_t time = date_cases[0].time;
    char text[64];
    memset(text, '#', sizeof text);
    create_isodate(text, &time);
    EXPECT_EQ(std::string(text, sizeof text),
              date_cases[0].expect + std::string(1, '\0') + std::string(44, '#'));
}

/// The date text that `write` makes, taken when the second did not change meanwhile, and the local time then.
template <class Write> std::pair<std::string, std::string> made_and_expected(Write write) {
    for (;;) {
        const time_t before = time(nullptr);
        std::string made = write();
        if (time(nullptr) != before)
            continue;
        tm local{};
        localtime_r(&before, &local);
        char expected[isodate_room];
        strftime(expected, sizeof expected, "%FT%T", &local);
        return {made, expected};
    }
}

TEST(DocumentHeaderIsoDate, IsThatOfTheCurrentTimeWhenNoneIsGiven) {
    const auto [made, expected] = made_and_expected([] {
        char text[isodate_room];
        create_isodate(text);
        return std::string(text);
    });
    EXPECT_EQ(made, expected);
    EXPECT_EQ(made.size(), 19u);
}

TEST(DocumentHeaderIsoDate, WithoutABufferDoesNothing) {
    time_t time = 0;
    create_isodate(nullptr, &time);
    create_isodate(nullptr, nullptr);
    create_isodate(nullptr);
    EXPECT_EQ(time, 0);
}

TEST(DocumentHeader, ReplacesWhatIsThere) {
    for (const char *before : {"", "short", "a text that is a good deal longer than the declaration is"}) {
        std::string text = before;
        set_xml_header(text);
        EXPECT_EQ(text, "<?xml version=\"1.0\" encoding=\"ISO-8859-1\" ?>\n");
        EXPECT_EQ(text.size(), 45u);
    }
}

TEST(DocumentHeaderIsoDateLine, IsAppendedWithTheCurrentLocalTime) {
    for (const char *before : {"", "<before>\n", "no line end"}) {
        const auto [made, expected] = made_and_expected([before] {
            std::string text = before;
            add_iso_date(text);
            return text;
        });
        EXPECT_EQ(made, before + ("\t<isodate>" + expected + "</isodate>\n"));
        EXPECT_EQ(made.size(), strlen(before) + 40);
    }
}

} // namespace
