/// Which bytes of a document a window lets through to the scanner, a part at a time.

#include "steps/plain_window.h"

#include <algorithm>
#include <string>

#include <gtest/gtest.h>

#include "support/lane.h"
#include "support/test_files.h"

namespace {

using zeb5::plain_encoding;
using zeb5::plain_window;

struct passed {
    std::string bytes;
    bool is_whole = false;
};

/// Takes all bytes up to each limit at once. With `keeps`, all bytes stay in the window from the first on.
passed pass(plain_window &window, plain_encoding encoding, bool keeps) {
    passed seen;
    if (!window.load())
        return seen;
    window.set_encoding(encoding);
    const char *from = window.begin();
    for (std::size_t before = 0; window.extend(from); before = seen.bytes.size()) {
        if (keeps)
            seen.bytes.clear();
        seen.bytes.append(from, window.limit());
        EXPECT_GT(seen.bytes.size(), before);
        if (seen.bytes.size() <= before)
            break;
        if (!keeps)
            from = window.limit();
    }
    seen.is_whole = window.is_at_end();
    if (seen.is_whole) {
        EXPECT_EQ(std::string(window.limit(), plain_window::readable),
                  std::string(plain_window::readable, '\0'));
    }
    return seen;
}

passed pass_memory(const std::string &document, plain_encoding encoding, bool keeps) {
    zeb5::memory_window window(document.c_str());
    return pass(window, encoding, keeps);
}

passed pass_file(const std::string &document, plain_encoding encoding, bool keeps) {
    const temporary_file named(document);
    const zeb5::plain_file file(named.path().c_str());
    zeb5::file_window window(file);
    return pass(window, encoding, keeps);
}

constexpr auto both_windows = {pass_memory, pass_file};

/// Parts of 48 bytes, while it lives.
class small_parts {
public:
    small_parts() : restored_(WITH_LANE) {
        zeb5::lane.part = 48;
        zeb5::lane.look_ahead = 64;
        zeb5::lane.most_token = 1000;
    }

private:
    way_in_use restored_;
};

bool is_whole(const std::string &document, plain_encoding encoding) {
    const bool in_memory = pass_memory(document, encoding, false).is_whole;
    EXPECT_EQ(pass_file(document, encoding, false).is_whole, in_memory) << document;
    return in_memory;
}

/// So many bytes, none of which is like its neighbours.
std::string bytes(std::size_t count) {
    std::string all;
    for (std::size_t i = 0; i < count; ++i)
        all += static_cast<char>('!' + i % 89);
    return all;
}

TEST(PlainWindow, LetsThroughAllOfADocument) {
    const small_parts parts;
    for (std::size_t length = 1; length < 500; ++length)
        for (const bool keeps : {false, true})
            for (const auto through : both_windows) {
                const passed seen = through(bytes(length), plain_encoding::UTF_8, keeps);
                EXPECT_EQ(seen.bytes, bytes(length));
                EXPECT_TRUE(seen.is_whole);
            }
}

TEST(PlainWindow, LetsThroughAllOfALargeDocument) {
    for (const std::size_t length : {65'535u, 65'536u, 65'537u, 131'072u, 131'073u, 1'000'000u})
        for (const auto through : both_windows) {
            const passed seen = through(bytes(length), plain_encoding::UTF_8, false);
            EXPECT_TRUE(seen.bytes == bytes(length)) << length;
            EXPECT_TRUE(seen.is_whole) << length;
        }
}

TEST(PlainWindow, ChecksEveryByte) {
    const std::size_t length = 200;
    for (const bool in_small_parts : {false, true}) {
        const way_in_use restored(WITH_LANE);
        if (in_small_parts)
            zeb5::lane.part = 48, zeb5::lane.look_ahead = 64;
        for (std::size_t at = 0; at < length; ++at) {
            EXPECT_FALSE(is_whole(bytes(length).replace(at, 1, "\xFF"), plain_encoding::UTF_8)) << at;
            EXPECT_TRUE(is_whole(bytes(length).replace(at, 1, "\xF0\x90\x80\x80"), plain_encoding::UTF_8))
                << at;
        }
    }
}

TEST(PlainWindow, ChecksBytesAheadOfThoseItLetsThrough) {
    const small_parts parts;
    for (std::size_t at = 0; at < 400; ++at)
        for (const auto through : both_windows)
            EXPECT_LE(through(bytes(500).replace(at, 1, "\xFF"), plain_encoding::UTF_8, false).bytes.size(),
                      std::max<std::size_t>(at, 64) - 64);
}

TEST(PlainWindow, KnowsTheCharactersOfUtf8) {
    for (const char *const character :
         {"\x7F", "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xE2\x82\xBF", "\xED\x9F\xBF", "\xEE\x80\x80",
          "\xEE\xBF\xBF", "\xEF\xBE\xBF", "\xEF\xBF\xBD", "\xF0\x90\x80\x80", "\xF0\xA0\xBF\xBF",
          "\xF1\x80\x80\x80", "\xF3\x90\x80\x80", "\xF4\x8F\xBF\xBF"}) {
        EXPECT_TRUE(is_whole(character, plain_encoding::UTF_8)) << character;
        EXPECT_TRUE(is_whole(std::string(character) + "x", plain_encoding::UTF_8)) << character;
    }
    for (const char *const none :
         {"\x80", "\xC1\xBF", "\xC2", "\xC2\x7F", "\xC2\xC0", "\xE0\x9F\xBF", "\xE2\x82", "\xE2\x82\x41",
          "\xE2\x41\x82", "\xED\xA0\x80", "\xED\xBF\xBF", "\xEF\xBF\xBE", "\xEF\xBF\xBF", "\xF0\x8F\xBF\xBF",
          "\xF0\x90\x80", "\xF0\x90\x80\x41", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF"}) {
        EXPECT_FALSE(is_whole(none, plain_encoding::UTF_8)) << none;
        EXPECT_FALSE(is_whole(std::string(none) + "x", plain_encoding::UTF_8)) << none;
    }
}

TEST(PlainWindow, KnowsTheCharactersOfOtherEncodings) {
    EXPECT_TRUE(is_whole("\x80\xFF", plain_encoding::ISO_8859_1));
    EXPECT_TRUE(is_whole("\x7F", plain_encoding::ASCII));
    EXPECT_FALSE(is_whole("\x80", plain_encoding::ASCII));
    EXPECT_FALSE(is_whole("\xC2\x80", plain_encoding::ASCII));
}

TEST(PlainWindow, LeavesControlCharactersToTheScanner) {
    const std::string document = bytes(200) + std::string("x\0y\x01", 4);
    EXPECT_EQ(pass_file(document, plain_encoding::UTF_8, false).bytes, document);
    EXPECT_EQ(pass_memory(document, plain_encoding::UTF_8, false).bytes, bytes(200) + 'x');
}

TEST(PlainWindow, StopsAtATokenThatIsTooLong) {
    const small_parts parts;
    for (const auto through : both_windows) {
        const passed seen = through(bytes(2000), plain_encoding::UTF_8, true);
        EXPECT_FALSE(seen.is_whole);
        EXPECT_GT(seen.bytes.size(), 1000u);
        EXPECT_LT(seen.bytes.size(), 1200u);
    }
}

TEST(PlainWindow, HasNothingOfAFileThatHasBecomeShorter) {
    const temporary_file named(bytes(100));
    const zeb5::plain_file file(named.path().c_str());
    std::filesystem::resize_file(named.path(), 0);
    zeb5::file_window window(file);
    EXPECT_FALSE(window.load());
}

} // namespace
