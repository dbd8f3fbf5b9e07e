/// What each character is in a plain document, and which references are plain.

#include "steps/plain_characters.h"

#include <limits>
#include <string>

#include <gtest/gtest.h>

namespace {

constexpr const char *letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";

/// All characters for which `holds` is true: first those of ASCII, from the lowest on, then the others.
template <class Holds> std::string all_with(Holds holds) {
    std::string all;
    for (int i = 0; i <= std::numeric_limits<unsigned char>::max(); ++i)
        if (const char c = static_cast<char>(i); holds(c))
            all += c;
    return all;
}

TEST(PlainCharacters, AreOfSomeKind) {
    EXPECT_EQ(all_with(zeb5::is_space), "\t\n\r ");
    const std::string upper(letters, 26), lower(letters + 26);
    EXPECT_EQ(all_with(zeb5::is_name_start), ':' + upper + '_' + lower);
    EXPECT_EQ(all_with(zeb5::is_name_character), "-.0123456789:" + upper + '_' + lower);
    std::string forbidden;
    for (char c = 0; c < ' '; ++c)
        if (c != '\t' && c != '\n' && c != '\r')
            forbidden += c;
    EXPECT_EQ(all_with(zeb5::is_forbidden), forbidden);
}

/// The number of the character and how many bytes are left, or "none".
std::string reference(const std::string &text) {
    char32_t character = 0;
    const std::string readable = text + std::string(64, '\0');
    const char *const end = zeb5::read_reference(readable.c_str(), character);
    return end ? std::to_string(character) + ' ' + std::string(end) : "none";
}

TEST(PlainCharacters, MayBeWrittenAsReferences) {
    EXPECT_EQ(reference("&amp;x"), "38 x");
    EXPECT_EQ(reference("&lt;"), "60 ");
    EXPECT_EQ(reference("&gt;"), "62 ");
    EXPECT_EQ(reference("&quot;;"), "34 ;");
    EXPECT_EQ(reference("&apos;"), "39 ");
    EXPECT_EQ(reference("&#9;"), "9 ");
    EXPECT_EQ(reference("&#0123456789;"), "none") << "ten digits";
    EXPECT_EQ(reference("&#01114111;x"), "1114111 x") << "eight digits";
    EXPECT_EQ(reference("&#xFedB;"), std::to_string(0xFEDB) + ' ');
    EXPECT_EQ(reference("&#xAbCf;"), std::to_string(0xABCF) + ' ');
    for (const char32_t character : {0x9u, 0xAu, 0xDu, 0x20u, 0xD7FFu, 0xE000u, 0xFFFDu, 0x10000u, 0x10FFFFu})
        EXPECT_EQ(reference("&#" + std::to_string(character) + ';'), std::to_string(character) + ' ');
}

TEST(PlainCharacters, AreOtherwiseNotPlain) {
    for (const char *const text : {"&;", "& amp;", "&amp", "&AMP;", "&e;", "&#;", "&#x;", "&#X41;", "&#65",
                                   "&#65 ;", "&#6A;", "&#xG;", "&#x100000041;", "&#-1;"})
        EXPECT_EQ(reference(text), "none") << text;
    for (const char32_t none :
         {0x0u, 0x8u, 0xBu, 0xCu, 0xEu, 0x1Fu, 0xD800u, 0xDFFFu, 0xFFFEu, 0xFFFFu, 0x110000u})
        EXPECT_EQ(reference("&#" + std::to_string(none) + ';'), "none") << std::to_string(none);
}

} // namespace
