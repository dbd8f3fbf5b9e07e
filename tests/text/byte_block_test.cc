/// Sixteen bytes at a time: loading and storing them, and one bit for each.

#include "text/byte_block.h"

#include <string>

#include <gtest/gtest.h>

namespace {

TEST(ByteBlock, IsLoadedFromAnywhereAndStoredAnywhere) {
    const std::string text = "0123456789abcdefghijklmnopqrstuv";
    for (std::size_t from = 0; from <= zeb5::block_bytes; ++from) {
        std::string copy(text.size(), '-');
        zeb5::store_block(copy.data() + from, zeb5::load_block(text.data() + from));
        EXPECT_EQ(copy, std::string(from, '-') + text.substr(from, 16) + std::string(16 - from, '-'));
    }
}

TEST(ByteBlock, HasABitForEachTopBit) {
    for (unsigned bits = 0; bits < 1U << 16; ++bits) {
        char bytes[16];
        for (unsigned i = 0; i < 16; ++i)
            bytes[i] = static_cast<char>(bits >> i & 1 ? 0x80 + i : 0x7F - i);
        ASSERT_EQ(zeb5::top_bits(zeb5::load_block(bytes)), bits);
    }
}

TEST(ByteBlock, HasABitForEachByteThatIsAskedFor) {
    EXPECT_EQ(zeb5::top_bits(zeb5::load_block("<a><b></b></a>  ") == '<'), 0b0000'0100'0100'1001U);
}

} // namespace
