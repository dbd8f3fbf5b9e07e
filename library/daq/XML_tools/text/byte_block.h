#ifndef ZEB5_BYTE_BLOCK_H
#define ZEB5_BYTE_BLOCK_H

/// Handles sixteen bytes at a time, on any processor, with the compiler's vector types: they become SSE2 on
/// x86-64 and NEON on arm64. Only the mask of a comparison needs code for each processor.

#include <cstdint>
#include <cstring>

namespace zeb5 {

using byte_block [[gnu::vector_size(16)]] = unsigned char;
using signed_byte_block [[gnu::vector_size(16)]] = signed char; // of a comparison: -1 for true, 0 for false

inline constexpr std::size_t block_bytes = sizeof(byte_block);

/// Loads 16 bytes from any address.
inline byte_block load_block(const char *from) {
    byte_block block;
    std::memcpy(&block, from, sizeof block);
    return block;
}

inline void store_block(char *to, byte_block block) { std::memcpy(to, &block, sizeof block); }

/// Returns a mask of the bytes whose top bit is set; the lowest bit stands for the first byte.
template <class Block> unsigned top_bits(Block block) {
    static_assert(sizeof block == block_bytes);
#ifdef __SSE2__
    using char_block [[gnu::vector_size(16)]] = char;
    return static_cast<unsigned>(__builtin_ia32_pmovmskb128(reinterpret_cast<char_block>(block)));
#else
    // The product moves the eight bits to the top byte. The first byte becomes the lowest bit on
    // little-endian processors only; both kinds supported are.
    std::uint64_t halves[2];
    std::memcpy(halves, &block, sizeof halves);
    const auto gather = [](std::uint64_t half) {
        return static_cast<unsigned>((half >> 7 & 0x0101010101010101) * 0x0102040810204080 >> 56);
    };
    return gather(halves[0]) | gather(halves[1]) << 8;
#endif
}

} // namespace zeb5

#endif
