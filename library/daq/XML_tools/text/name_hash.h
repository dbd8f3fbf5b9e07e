#ifndef ZEB5_NAME_HASH_H
#define ZEB5_NAME_HASH_H

/// Hashes a name, eight bytes at a time. This takes half of the instructions of std::hash and is inlined.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace zeb5 {

/// Each bit affects both halves of the product, in a way that depends on the other bits.
inline std::size_t mixed(std::size_t key, std::size_t word) {
    __extension__ typedef unsigned __int128 two_words;
    const two_words product = static_cast<two_words>(key ^ word) * 0x9E3779B97F4A7C15;
    return static_cast<std::size_t>(product) ^ static_cast<std::size_t>(product >> 64);
}

/// Any bits of the hash may be used as the place in a table. With a `seed` that documents cannot know, such
/// as the address of the table, nobody can choose names that all get the same place. The seed is mixed in
/// twice, the second time at the end: half of an address is the same in all processes, and after one product
/// that is enough to choose names of eight bytes that get neighbouring places.
inline std::size_t name_hash(std::string_view name, std::size_t seed) {
    const auto word_at = [](const char *at) {
        std::size_t word;
        std::memcpy(&word, at, sizeof word);
        return word;
    };
    const char *at = name.data();
    const char *const end = at + name.size();
    std::size_t key = seed + name.size();
    std::size_t word = 0;
    for (; end - at > 8; at += 8)
        key = mixed(key, word_at(at));
    if (name.size() >= 8)
        return mixed(seed, mixed(key, word_at(end - 8))); // some bytes once more
    for (; at != end; ++at)
        word = word << 8 | static_cast<unsigned char>(*at);
    return mixed(seed, mixed(key, word));
}

/// For tables of the standard library, with names as the parser or as the records give them. The seed is an
/// address, which documents cannot know.
struct seeded_name_hash {
    std::size_t operator()(std::string_view name) const { return name_hash(name, seed); }
    std::size_t operator()(std::u16string_view name) const {
        return name_hash({reinterpret_cast<const char *>(name.data()), name.size() * sizeof(char16_t)}, seed);
    }

    std::size_t seed = reinterpret_cast<std::uintptr_t>(this);
};

} // namespace zeb5

#endif
