#include "name_hash.h"

#include <set>
#include <string>

#include <gtest/gtest.h>

namespace {

using zeb5::name_hash;

/// Halves of a hash: tables take one for the place and one for the key.
struct halves {
    void add(std::size_t hash) {
        low.insert(static_cast<std::uint32_t>(hash));
        high.insert(static_cast<std::uint32_t>(hash >> 32));
    }

    std::set<std::uint32_t> low, high;
};

TEST(NameHash, TellsNamesThatDifferInOneByteApart) {
    for (std::size_t length = 1; length <= 40; ++length) {
        halves seen;
        std::string name(length, 'a');
        for (char &one : name)
            for (const char other : {'b', 'c', '\x01', '\xFF'}) {
                one = other;
                seen.add(name_hash(name, 1));
                one = 'a';
            }
        EXPECT_EQ(seen.low.size(), 4 * length);
        EXPECT_EQ(seen.high.size(), 4 * length);
    }
}

TEST(NameHash, TellsNamesOfDifferentLengthsApart) {
    halves seen;
    for (std::size_t length = 0; length <= 256; ++length)
        seen.add(name_hash(std::string(length, '\0'), 1));
    EXPECT_EQ(seen.low.size(), 257u);
    EXPECT_EQ(seen.high.size(), 257u);
}

TEST(NameHash, DependsOnTheSeed) {
    for (const std::string name : {"", "a", "eight by", "more than eight bytes"}) {
        halves seen;
        for (std::size_t seed = 0; seed < 4096; seed += 16)
            seen.add(name_hash(name, seed));
        EXPECT_EQ(seen.low.size(), 256u) << name;
        EXPECT_EQ(seen.high.size(), 256u) << name;
    }
}

} // namespace
