/// Numbers come out as sscanf() reads them, whatever the text, the locale and the rounding mode.

#include "text/number_text.h"

#include <bit>
#include <cfenv>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <random>
#include <string>

#include <gtest/gtest.h>
#include <locale.h>

#include "support/element.h"
#include "support/env_dictionary_records.h"
#include "support/event_list_records.h"
#include "support/locales.h"
#include "xml_platform.h"

namespace {

constexpr std::uint32_t kept_mask = 0xDEADBEEF; // what the field held before
constexpr float kept_delta = 77;

std::uint32_t scanned_unsigned(const std::string &text, std::uint32_t field = kept_mask) {
    std::sscanf(text.c_str(), text.find('x') != std::string::npos ? " 0x%X " : "%u", &field);
    return field;
}

float scanned_float(const std::string &text, float field = kept_delta) {
    std::sscanf(text.c_str(), "%f", &field);
    return field;
}

void expect_scanned(const std::string &text) {
    std::uint32_t mask = kept_mask;
    zeb5::read_unsigned(text, mask);
    EXPECT_EQ(mask, scanned_unsigned(text)) << '"' << text << '"';
    float delta = kept_delta;
    zeb5::read_float(text, delta);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(delta), std::bit_cast<std::uint32_t>(scanned_float(text)))
        << '"' << text << '"';
}

const char *const edges[] = {
    // empty and near to a number
    "", " ", "x", "0x", "0X", "-", "+", ".", ",", "e5", "0x.", "0xg", "x0", "abc",
    // at the bounds of 32 and 64 bits
    "0", "00", "007", "4294967295", "4294967296", "4294967297", "9223372036854775807", "9223372036854775808",
    "18446744073709551615", "18446744073709551616", "99999999999999999999999", "-1", "-4294967295", "+5",
    "0x0", "0xFFFFFFFF", "0xffffffff", "0x100000000", "0x1FFFFFFFF", "0xFFFFFFFFFFFFFFFF",
    "0x10000000000000000", "0xaBcDeF", "0X1F", "0x1F ", " 0x1F", "0x 1F", "0x-1", "0x+1", "0x0x1", "0x1x",
    "0x1.8", "0x1p3", "1x", "12 0x3", "12 bits", "12\n", "\t12", "1,000", "1.000",
    // at the bounds of what a float tells apart
    "16777215", "16777216", "16777217", "16777219", "167772.16", "167772.17", "16.777217", "1.6777217",
    "0.16777217", "33554433", "33554435.0", "0.1", "0.3", "0.30000001192092896", "0.0000000001",
    "0.00000000001", "1.0000000000", "1.00000000000", "123456.000000", "12345678.000000", "100000000.000000",
    "0.0000000000000", "999999999999999999", "9999999999999999999", "9999999999999999.99",
    "99999999999999999.99", "00000000000000.5", "000000000000000000000000.5", "1.17549435e-38",
    "340282346638528859811704183484516925440.000000", "340282366920938463463374607431768211456",
    "0.000000000000000000000000000000000000000000001",
    // no plain ones
    "5.", ".5", "-.5", "-0", "-0.0", "+0.5", "0.5.", "0..5", "0.5 ", "0.5mm", "1e3", "1E3", "1e", "1e+",
    "1.5e-2", "inf", "INFINITY", "nan", "nan(1)", "infinit", "0,5", "5,", "1'000", "\2405", "5\240"};

std::string digits(std::mt19937 &random, std::size_t most) {
    std::string text;
    for (std::size_t left = random() % (most + 1); left > 0; --left)
        text += random() % 3 == 0 ? '0' : static_cast<char>('0' + random() % 10);
    return text;
}

std::string printed(const char *format, std::uint_fast32_t bits) {
    char text[64];
    std::snprintf(text, sizeof text, format,
                  static_cast<double>(std::bit_cast<float>(static_cast<std::uint32_t>(bits))));
    return text;
}

std::string written(std::mt19937 &random) {
    static constexpr const char *whole[] = {"%u", "%X", "0x%x", "0x%X", "0x%08x"};
    char text[32];
    switch (random() % 6) {
    case 0:
        return digits(random, 21);
    case 1:
        return digits(random, 10) + '.' + digits(random, 12);
    case 2:
        return digits(random, 3) + '.' + digits(random, 6);
    case 3:
        return printed("%f", random());
    case 4:
        return printed("%g", random());
    default:
        std::snprintf(text, sizeof text, whole[random() % std::size(whole)],
                      static_cast<unsigned>(random() >> random() % 32));
        return text;
    }
}

/// A number as somebody could have written it, with a slip or two in every second one.
std::string random_text(std::mt19937 &random) {
    static constexpr char slips[] = " +-.,eExX0123456789abcdefABCDEF\t\ninNaNpP";
    std::string text = written(random);
    for (std::size_t left = random() % 2 * random() % 3; left > 0; --left) {
        const std::size_t at = random() % (text.size() + 1);
        text.replace(at, random() % 2, 1, slips[random() % (sizeof slips - 1)]);
    }
    return text;
}

class NumberText : public InEachLocale {};
INSTANTIATE_TEST_SUITE_P(Locale, NumberText, testing::ValuesIn(locales), locale_in_name);

TEST_P(NumberText, IsReadAsTheCLibraryReadsIt) {
    for (const char *text : edges)
        expect_scanned(text);
    std::mt19937 random(20240514);
    for (int left = 100'000; left > 0 && !HasFailure(); --left)
        expect_scanned(random_text(random));
}

TEST_P(NumberText, IsRoundedAsTheThreadSays) {
    std::mt19937 random(20240515);
    for (const int mode : {FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO}) {
        SCOPED_TRACE(mode);
        std::fesetround(mode);
        for (const char *text : edges)
            expect_scanned(text);
        for (int left = 20'000; left > 0 && !HasFailure(); --left)
            expect_scanned(random_text(random));
    }
    std::fesetround(FE_TONEAREST);
}

TEST_P(NumberText, OfADictionaryIsReadAsTheCLibraryReadsIt) {
    const xml_platform up;
    std::mt19937 random(20240516);
    std::string document = "<ENVINDEXDICT>";
    dictionary<classic_layout> wanted;
    for (int i = 0; i < 2'000; ++i) {
        const std::string abs = random_text(random) + '0', rel = '0' + random_text(random); // never blank
        document += "<CHANNEL><INDEX>" + std::to_string(i) + "</INDEX><PROP>p</PROP><DABS>" + abs +
                    "</DABS><DREL>" + rel + "</DREL></CHANNEL>";
        wanted.add(i, "p", scanned_float(abs, 0), scanned_float(rel, 0));
    }
    document += "</ENVINDEXDICT>";
    dictionary<classic_layout> classic;
    dictionary<layout_2010> list_2010;
    EXPECT_EQ(classic_layout::read_memory(document.data(), &classic.entries), 0);
    EXPECT_EQ(layout_2010::read_memory(document.data(), &list_2010.entries), 0);
    EXPECT_EQ(describe(classic.entries), describe(wanted.entries));
    EXPECT_EQ(describe(list_2010.entries), describe(wanted.entries));
}

TEST_P(NumberText, OfAnEventListIsReadAsTheCLibraryReadsIt) {
    const xml_platform up;
    std::mt19937 random(20240517);
    std::string document = "<BMR>";
    std::vector<std::string> texts;
    for (int i = 0; i < 2'000; ++i) {
        texts.push_back(random_text(random) + '0');
        document += "<EVENT><TYPE>3</TYPE>";
        for (const std::string tag : {"TMASK", "PRIORITY", "MINTIMESEC", "MINTIMEUSEC"})
            document += element(tag, texts.back());
        document += "</EVENT>";
    }
    document += "</BMR>";
    event_list list;
    ASSERT_EQ(zeb5_parse_ev_list_read(document.data(), &list.entries), 0);
    ASSERT_EQ(list.entries.size(), texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const zeb5_ev_entry &entry = *list.entries[i];
        const std::uint32_t wanted = scanned_unsigned(texts[i], 0);
        EXPECT_EQ(entry.tmask, wanted) << texts[i];
        EXPECT_EQ(entry.priority, wanted) << texts[i];
        EXPECT_EQ(entry.min_ev_time.timeup, wanted) << texts[i];
        EXPECT_EQ(entry.min_ev_time.timelow, wanted) << texts[i];
    }
}

TEST(NumberTextLocale, IsTheOneOfTheThread) {
    const locale_t point = newlocale(LC_ALL_MASK, "C", nullptr);
    const locale_in_use comma_in_use("de_DE.ISO-8859-1");
    if (!comma_in_use.is_set())
        GTEST_SKIP() << "no locale with a decimal comma and nothing to make it of";
    const locale_t comma = duplocale(LC_GLOBAL_LOCALE); // newlocale() would lose the memory of a LOCPATH
    const struct {
        locale_t locale;
        const char *text;
        float value;
    } rows[] = {{point, "0.5", 0.5F}, {point, "0,5", 0}, {comma, "0.5", 0}, {comma, "0,5", 0.5F}};
    for (const auto &row : rows) {
        const locale_t before = uselocale(row.locale);
        float value = kept_delta;
        zeb5::read_float(row.text, value);
        uselocale(before);
        EXPECT_EQ(value, row.value) << (row.locale == comma ? "comma " : "point ") << row.text;
    }
    freelocale(comma);
    freelocale(point);
}

} // namespace
