#ifndef ZEB5_BYTE_BLOCK_H
#define ZEB5_BYTE_BLOCK_H

/// Sixteen bytes at a time, on any processor: the compiler's vector types, which become SSE2 on x86-64 and
/// NEON on arm64. Only the mask of a comparison needs an instruction of its own.

#include <cstdint>
#include <cstring>

namespace zeb5 {

using byte_block [[gnu::vector_size(16)]] = unsigned char;
using signed_byte_block [[gnu::vector_size(16)]] = signed char; // of a comparison: -1 where it holds, else 0

inline constexpr std::size_t block_bytes = sizeof(byte_block);

/// 16 bytes from anywhere.
inline byte_block load_block(const char *from) {
    byte_block block;
    std::memcpy(&block, from, sizeof block);
    return block;
}

inline void store_block(char *to, byte_block block) { std::memcpy(to, &block, sizeof block); }

/// A bit for each byte whose top bit is set, that of the first byte lowest.
template <class Block> unsigned top_bits(Block block) {
    static_assert(sizeof block == block_bytes);
#ifdef __SSE2__
    using char_block [[gnu::vector_size(16)]] = char;
    return static_cast<unsigned>(__builtin_ia32_pmovmskb128(reinterpret_cast<char_block>(block)));
#else
    // The product moves the eight bits to the top byte; that the first byte is the lowest holds on
    // little-endian processors, as both kinds supported are.
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
