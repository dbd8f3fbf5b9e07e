#include "text/name_hash.h"

#include <cstring>
#include <set>
#include <string>
#include <vector>

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

/// The upper half of addresses of stacks and heaps.
const std::size_t regions[] = {0x7FFC, 0x7F12, 0x5555};

/// Names of eight bytes whose products with a seed from `region` lie in one of 256 parts of a table.
std::vector<std::string> names_side_by_side(std::size_t region, unsigned table_bits) {
    std::vector<std::string> names;
    for (std::size_t n = 0; n < 64 * 64 * 64; ++n) {
        std::string name(8, 'A');
        for (std::size_t i = 0; i < 3; ++i)
            name[5 + i] = static_cast<char>('@' + (n >> 6 * i) % 64);
        std::uint32_t upper_half;
        std::memcpy(&upper_half, &name[4], sizeof upper_half);
        const std::size_t product = (region ^ upper_half) * 0x9E3779B97F4A7C15 >> 32;
        if (product % (1U << table_bits) >> (table_bits - 8) == 0)
            names.push_back(name);
    }
    return names;
}

TEST(NameHash, SpreadsNamesThatAreMadeForAddresses) {
    constexpr unsigned table_bits = 17;
    for (const std::size_t region : regions) {
        const std::vector<std::string> names = names_side_by_side(region, table_bits);
        EXPECT_GT(names.size(), 500u);
        for (std::size_t n = 1; n <= 16; ++n) {
            const std::size_t seed = region << 32 | n * 0x9E37790;
            std::set<std::size_t> parts;
            for (const std::string &name : names)
                parts.insert(name_hash(name, seed) % (1U << table_bits) >> (table_bits - 8));
            EXPECT_GT(parts.size(), 200u) << seed;
        }
    }
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

TEST(SeededNameHash, TakesNarrowAndWideNamesEachWithASeedOfItsOwn) {
    const zeb5::seeded_name_hash hashes[2];
    EXPECT_NE(hashes[0]("name"), hashes[1]("name"));
    EXPECT_NE(hashes[0](u"name"), hashes[1](u"name"));
    const zeb5::seeded_name_hash copy = hashes[0];
    EXPECT_EQ(copy("name"), hashes[0]("name"));
    EXPECT_EQ(copy(u"name"), hashes[0](u"name"));
}

} // namespace
