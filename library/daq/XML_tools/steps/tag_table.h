#ifndef ZEB5_TAG_TABLE_H
#define ZEB5_TAG_TABLE_H

/// Maps element names to actions. A reader is a table of rows; a look-up takes one comparison however many
/// there are.

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string_view>

namespace zeb5 {

/// For hashing by multiplication: the top bits of the product are the slot.
inline constexpr std::uint64_t golden_ratio = 0x9E3779B97F4A7C15;

/// A name as two numbers. Comparing these is comparing the names.
struct tag_key {
    static constexpr std::size_t bytes = 16;

    constexpr bool operator==(const tag_key &) const = default;

    std::uint64_t low = 0;
    std::uint64_t high = 0;
};

/// Returns the key of a name of 1 to 16 bytes: the bytes followed by zeros, the first byte lowest.
constexpr tag_key key_of(std::string_view tag) {
    tag_key key;
    for (std::size_t i = 0; i < tag.size(); ++i)
        (i < 8 ? key.low : key.high) |= static_cast<std::uint64_t>(static_cast<unsigned char>(tag[i]))
                                        << i % 8 * 8;
    return key;
}

/// The same with a few overlapping loads: copying the bytes would be a call, which takes 10 instructions more
/// for each look-up. Works on little-endian processors, as byte_block.h does.
inline tag_key loaded_key_of(std::string_view tag) {
    const auto load = [&tag]<class Word>(Word word, std::size_t from) {
        std::memcpy(&word, tag.data() + from, sizeof word);
        return static_cast<std::uint64_t>(word);
    };
    const std::size_t size = tag.size();
    if (size > 8)
        return {load(std::uint64_t{}, 0), load(std::uint64_t{}, size - 8) >> (128 - 8 * size)};
    if (size >= 4)
        return {load(std::uint32_t{}, 0) | load(std::uint32_t{}, size - 4) << (8 * size - 32), 0};
    const std::size_t middle = size / 2;
    return {load(std::uint8_t{}, 0) | load(std::uint8_t{}, middle) << 8 * middle |
                load(std::uint8_t{}, size - 1) << (8 * size - 8),
            0};
}

template <class Action> struct tag_row {
    std::string_view tag;
    Action action;
};

/// A perfect hash over the rows, which is found when the library is compiled.
template <class Action, std::size_t Rows> class tag_table {
public:
    consteval tag_table(const tag_row<Action> (&rows)[Rows]) {
        for (std::size_t i = 0; i < Rows; ++i)
            actions_[i] = rows[i].action;
        while (!place(rows))
            if ((factor_ += 2) > most_factors)
                throw std::logic_error("no factor tells these tags apart");
    }

    /// Returns the number of the row of exactly this tag, which must not hold a NUL; -1 for none.
    int row_of(std::string_view tag) const {
        if (tag.empty() || tag.size() > tag_key::bytes)
            return -1;
        const tag_key key = loaded_key_of(tag);
        const slot &place = slots_[slot_of(key)];
        return place.key == key ? place.row : -1;
    }

    /// The action of a row by its number.
    const Action &action(int row) const { return actions_[static_cast<std::size_t>(row)]; }

    /// Returns the action of exactly this tag, or null.
    const Action *find(std::string_view tag) const {
        const int row = row_of(tag);
        return row >= 0 ? &action(row) : nullptr;
    }

private:
    struct slot {
        tag_key key; // zero: free slot
        int row = 0;
    };

    /// Most slots stay free, so that a factor is found soon.
    static constexpr unsigned slot_bits = Rows > 16 ? 7 : 5;
    static constexpr std::uint64_t most_factors = 20001;

    constexpr std::size_t slot_of(const tag_key &key) const {
        return (key.low + key.high * 31) * factor_ * golden_ratio >> (64 - slot_bits);
    }

    constexpr bool place(const tag_row<Action> (&rows)[Rows]) {
        slots_ = {};
        for (std::size_t i = 0; i < Rows; ++i) {
            if (rows[i].tag.empty() || rows[i].tag.size() > tag_key::bytes)
                throw std::logic_error("a tag of the table has 1 to 16 bytes");
            const tag_key key = key_of(rows[i].tag);
            slot &place = slots_[slot_of(key)];
            if (place.key != tag_key())
                return false;
            place = {key, static_cast<int>(i)};
        }
        return true;
    }

    std::array<Action, Rows> actions_{};
    std::array<slot, std::size_t{1} << slot_bits> slots_{};
    std::uint64_t factor_ = 1;
};

} // namespace zeb5

#endif
