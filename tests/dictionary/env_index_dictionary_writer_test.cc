/// What the env index dictionary writers write: the document, the lines and the console listing.

#include <cfloat>
#include <cmath>
#include <cstring>
#include <random>

#include "support/env_dictionary_writing.h"
#include "xml_platform.h"

namespace {

template <class Layout> class EnvIndexDictionaryWriter : public testing::Test {};

template <class Layout> std::string lines_of(typename Layout::list *list) {
    const temporary_file file("old content");
    const dump_outcome seen = dump_dictionary<Layout>(list, &file.path(), text_lines, -1, nullptr);
    EXPECT_EQ(seen.result, 0);
    EXPECT_EQ(seen.streams.out, created_line<Layout>(file.path()) + closed_line<Layout>(file.path()));
    EXPECT_EQ(seen.streams.err, "");
    return file.text();
}

} // namespace

TYPED_TEST_SUITE(EnvIndexDictionaryWriter, both_layouts);

TYPED_TEST(EnvIndexDictionaryWriter, WritesTheDocumentByteForByte) {
    dictionary<TypeParam> list;
    list.add(3, "ORVIN/A/TEMP", 0.5F, 0.01F);
    list.add(-1, "ORVIN/B", -2, 1e6F);
    const std::string since = local_date();
    const std::string document = dictionary_xml<TypeParam>(&list.entries);
    EXPECT_EQ(without_dictionary_date(document, since), "<?xml version=\"1.0\" encoding=\"ISO-8859-1\" ?>\n"
                                                        "<ENVINDEXDICT>\n"
                                                        "<CHANNEL>\n"
                                                        "<INDEX>3</INDEX>\n"
                                                        "<PROP>ORVIN/A/TEMP</PROP>\n"
                                                        "<DABS>0.500000</DABS>\n"
                                                        "<DREL>0.010000</DREL>\n"
                                                        "</CHANNEL>\n"
                                                        "<CHANNEL>\n"
                                                        "<INDEX>-1</INDEX>\n"
                                                        "<PROP>ORVIN/B</PROP>\n"
                                                        "<DABS>-2.000000</DABS>\n"
                                                        "<DREL>1000000.000000</DREL>\n"
                                                        "</CHANNEL>\n"
                                                        "</ENVINDEXDICT>\n"
                                                        "\n");
    EXPECT_EQ(document.size(),
              without_dictionary_date(document, since).size() + 40); // the date line was there
}

TYPED_TEST(EnvIndexDictionaryWriter, WritesAnEmptyDocument) {
    dictionary<TypeParam> list;
    const std::string since = local_date();
    const std::string document = dictionary_xml<TypeParam>(&list.entries);
    EXPECT_EQ(without_dictionary_date(document, since), "<?xml version=\"1.0\" encoding=\"ISO-8859-1\" ?>\n"
                                                        "<ENVINDEXDICT>\n"
                                                        "</ENVINDEXDICT>\n"
                                                        "\n");
    EXPECT_EQ(document.size(), without_dictionary_date(document, since).size() + 40);
}

TYPED_TEST(EnvIndexDictionaryWriter, WritesTheLinesByteForByte) {
    dictionary<TypeParam> list;
    list.add(3, "ORVIN/A/TEMP", 0.5F, 0.01F);
    list.add(-1, "", -2, 1e6F);
    list.add(INT_MAX, "tab\tin it, \"quoted\"");
    list.add(INT_MIN, "%s%d%n");
    EXPECT_EQ(lines_of<TypeParam>(&list.entries), "3\tORVIN/A/TEMP\t0.500000\t0.010000\n"
                                                  "-1\t!!!UNDEFINED!!!\t-2.000000\t1000000.000000\n"
                                                  "2147483647\ttab\tin it, \"quoted\"\t0.000000\t0.000000\n"
                                                  "-2147483648\t%s%d%n\t0.000000\t0.000000\n");
    dictionary<TypeParam> empty;
    EXPECT_EQ(lines_of<TypeParam>(&empty.entries), "");
}

TYPED_TEST(EnvIndexDictionaryWriter, WritesNamesAndIndicesAsTheyAre) {
    const std::string longest(TypeParam::name_size - 1, 'n');
    const std::pair<int, std::string> rows[] = {
        {0, ""}, {INT_MAX, "a&b<c>\"d\""}, {INT_MIN, "%s%n"}, {7, " padded "}, {8, longest}};
    for (const auto &[index, prop] : rows) {
        dictionary<TypeParam> list;
        list.add(index, prop);
        const std::string since = local_date();
        EXPECT_EQ(
            without_dictionary_date(dictionary_xml<TypeParam>(&list.entries), since),
            dictionary_document(dictionary_channel(std::to_string(index), prop, "0.000000", "0.000000")));
    }
}

namespace {

const struct {
    float value;
    const char *written; // with "%f"
    const char *shown;   // as a stream does by default
} deltas[] = {
    {0, "0.000000", "0"},
    {-0.0F, "-0.000000", "-0"},
    {0.1F, "0.100000", "0.1"},
    {0.01F, "0.010000", "0.01"},
    {1234567, "1234567.000000", "1.23457e+06"},
    {123456, "123456.000000", "123456"},
    {0.0001F, "0.000100", "0.0001"},
    {0.00001F, "0.000010", "1e-05"},
    {5e-7F, "0.000000", "5e-07"}, // 4.99999999e-07, below the half
    {6e-7F, "0.000001", "6e-07"},
    {FLT_MIN, "0.000000", "1.17549e-38"},
    {-FLT_MIN, "-0.000000", "-1.17549e-38"},
    {16777216, "16777216.000000", "1.67772e+07"},
    {1e10F, "10000000000.000000", "1e+10"},
    // 31 characters and more
    {1e23F, "99999997781963083612160.000000", "1e+23"},
    {-1e23F, "-99999997781963083612160.000000", "-1e+23"},
    {1e24F, "1000000013848427855085568.000000", "1e+24"},
    {-1e24F, "-1000000013848427855085568.000000", "-1e+24"},
    {1e30F, "1000000015047466219876688855040.000000", "1e+30"},
    {FLT_MAX, "340282346638528859811704183484516925440.000000", "3.40282e+38"},
    {-FLT_MAX, "-340282346638528859811704183484516925440.000000", "-3.40282e+38"},
    {INFINITY, "inf", "inf"},
    {-INFINITY, "-inf", "-inf"},
    {NAN, "nan", "nan"},
};

} // namespace

TYPED_TEST(EnvIndexDictionaryWriter, WritesDeltasOfAnyMagnitudeInFull) {
    for (const auto &delta : deltas) {
        dictionary<TypeParam> list;
        list.add(1, "P", delta.value, 1);
        list.add(2, "Q", 1, delta.value);
        const std::string since = local_date(), written = delta.written, shown = delta.shown;
        EXPECT_EQ(without_dictionary_date(dictionary_xml<TypeParam>(&list.entries), since),
                  dictionary_document(dictionary_channel("1", "P", written, "1.000000") +
                                      dictionary_channel("2", "Q", "1.000000", written)));
        EXPECT_EQ(lines_of<TypeParam>(&list.entries),
                  "1\tP\t" + written + "\t1.000000\n2\tQ\t1.000000\t" + written + "\n");
        EXPECT_EQ(dump_dictionary<TypeParam>(&list.entries, nullptr, text_lines, -1, nullptr).streams.out,
                  "-------------- 1 -----------------\n"
                  " Index : 1\n"
                  " Channel: P DABS " +
                      shown +
                      " DREL 1\n"
                      "-------------- 2 -----------------\n"
                      " Index : 2\n"
                      " Channel: Q DABS 1 DREL " +
                      shown + "\n");
    }
}

TYPED_TEST(EnvIndexDictionaryWriter, ListsTheEntriesByteForByteWhereThereIsNoDestination) {
    dictionary<TypeParam> list;
    list.add(3, "ORVIN/A/TEMP", 0.5F, 0.01F);
    list.add(-1, "", -2, 1e6F);
    const std::string no_file;
    for (int mode : all_dictionary_modes)
        for (const std::string *name : {static_cast<const std::string *>(nullptr), &no_file}) {
            const dump_outcome seen = dump_dictionary<TypeParam>(&list.entries, name, mode, -1, nullptr);
            EXPECT_EQ(seen.result, 0) << mode;
            EXPECT_EQ(seen.streams.err, "") << mode;
            EXPECT_EQ(seen.streams.out, "-------------- 1 -----------------\n"
                                        " Index : 3\n"
                                        " Channel: ORVIN/A/TEMP DABS 0.5 DREL 0.01\n"
                                        "-------------- 2 -----------------\n"
                                        " Index : -1\n"
                                        " Channel:  DABS -2 DREL 1e+06\n")
                << mode;
            dictionary<TypeParam> empty;
            const dump_outcome nothing = dump_dictionary<TypeParam>(&empty.entries, name, mode, -1, nullptr);
            EXPECT_EQ(nothing.result, 0) << mode;
            EXPECT_EQ(nothing.streams.out + nothing.streams.err, "") << mode;
        }
}

TYPED_TEST(EnvIndexDictionaryWriter, WritesAllOfANameWhoseEndIsOverwritten) {
    dictionary<TypeParam> list;
    auto &field = list.add(1, "P")->data.env_prop;
    std::memset(field, 'p', sizeof field);
    const std::string name(sizeof field, 'p');
    EXPECT_EQ(lines_of<TypeParam>(&list.entries), "1\t" + name + "\t0.000000\t0.000000\n");
    const std::string since = local_date();
    EXPECT_EQ(without_dictionary_date(dictionary_xml<TypeParam>(&list.entries), since),
              dictionary_document(dictionary_channel("1", name, "0.000000", "0.000000")));
    EXPECT_EQ(dump_dictionary<TypeParam>(&list.entries, nullptr, text_lines, -1, nullptr).streams.out,
              "-------------- 1 -----------------\n Index : 1\n Channel: " + name + " DABS 0 DREL 0\n");
}

TYPED_TEST(EnvIndexDictionaryWriter, WritesAnEntryAsOftenAsItStandsThere) {
    dictionary<TypeParam> list;
    list.entries.push_back(list.add(1, "P"));
    list.add(1, "P");
    const std::string since = local_date(), channel = dictionary_channel("1", "P", "0.000000", "0.000000");
    EXPECT_EQ(without_dictionary_date(dictionary_xml<TypeParam>(&list.entries), since),
              dictionary_document(channel + channel + channel));
}

TYPED_TEST(EnvIndexDictionaryWriter, LeavesTheListAndItsEntriesAsTheyAre) {
    dictionary<TypeParam> list;
    list.add(3, "P", 0.5F, 0.01F);
    list.entries.push_back(list.entries[0]);
    list.add(4, "");
    const std::string before = describe(list.entries);
    const temporary_file file;
    std::string text;
    for (int mode : all_dictionary_modes) {
        EXPECT_EQ(dump_dictionary<TypeParam>(&list.entries, &file.path(), mode, -1, &text).result, 0);
        EXPECT_EQ(describe(list.entries), before) << mode;
    }
}

// Reading back

namespace {

const char name_characters[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789./_-:[] ";

/// A dictionary that survives: named entries with deltas of at most six decimals.
template <class Layout> void fill_at_random(dictionary<Layout> &list, std::mt19937 &random) {
    for (std::size_t left = random() % 8; left > 0; --left) {
        std::string prop = "P";
        for (std::size_t more = random() % Layout::name_size; more > 1; --more)
            prop += name_characters[random() % (sizeof name_characters - 1)];
        const auto delta = [&random] {
            return std::ldexp(static_cast<float>(random() % (1 << 24)) - (1 << 23), -6);
        };
        const auto index = static_cast<std::int32_t>(static_cast<std::uint32_t>(random()));
        const float abs = delta();
        list.add(index, prop, abs, delta());
    }
}

} // namespace

TYPED_TEST(EnvIndexDictionaryWriter, WhatWasWrittenIsReadBackAndWrittenAgainAlike) {
    const xml_platform up;
    std::mt19937 random(20240514);
    for (int run = 0; run < 100; ++run) {
        dictionary<TypeParam> list;
        fill_at_random(list, random);
        const std::string since = local_date(), document = dictionary_xml<TypeParam>(&list.entries);
        for (reader_form form : both_readers) {
            dictionary<TypeParam> again;
            const read_outcome seen = read_dictionary<TypeParam>(form, document, &again.entries);
            ASSERT_EQ(seen.result, 0) << document << seen.err;
            ASSERT_EQ(describe(again.entries), describe(list.entries)) << document;
            ASSERT_EQ(without_dictionary_date(dictionary_xml<TypeParam>(&again.entries), since),
                      without_dictionary_date(document, since));
        }
    }
}

TYPED_TEST(EnvIndexDictionaryWriter, DeltasOfAnyMagnitudeAreReadBack) {
    for (float value : {1e23F, -1e24F, 1e30F, FLT_MAX, -FLT_MAX, INFINITY, -INFINITY}) {
        dictionary<TypeParam> list, again;
        list.add(1, "P", value, -value);
        std::string document = dictionary_xml<TypeParam>(&list.entries);
        EXPECT_EQ(TypeParam::read_memory(document.data(), &again.entries), 0);
        EXPECT_EQ(describe(again.entries), describe(list.entries));
    }
}

TYPED_TEST(EnvIndexDictionaryWriter, NamelessEntriesAndSmallDigitsDoNotSurvive) {
    dictionary<TypeParam> list, again;
    list.add(1, "");
    list.add(2, "P", 0.0000004F, 1.0000004F);
    list.add(3, " ");
    std::string document = dictionary_xml<TypeParam>(&list.entries);
    EXPECT_EQ(TypeParam::read_memory(document.data(), &again.entries), 0);
    EXPECT_EQ(describe(again.entries), "2 'P' 0 1");
}

// An ampersand is written as it is, and the document cannot be read.
TYPED_TEST(EnvIndexDictionaryWriter, NamesWithMarkupMakeADocumentThatCannotBeRead) {
    dictionary<TypeParam> list, again;
    list.add(1, "a&b");
    const read_outcome seen =
        read_dictionary<TypeParam>(READ_MEMORY, dictionary_xml<TypeParam>(&list.entries), &again.entries);
    EXPECT_EQ(seen.result, 1);
    EXPECT_EQ(seen.err.rfind("\nFatal Error at (file DOCUMENT, line 6, char ", 0), 0U) << seen.err;
}
