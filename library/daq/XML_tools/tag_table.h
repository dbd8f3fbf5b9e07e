#ifndef ZEB5_TAG_TABLE_H
#define ZEB5_TAG_TABLE_H

/// Element name to action. A reader is a table of rows; the look-up takes one comparison whatever their
/// number.

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string_view>

namespace zeb5 {

/// For hashing by multiplication: the top bits of the product are the slot.
inline constexpr std::uint64_t golden_ratio = 0x9E3779B97F4A7C15;

/// The first 16 bytes of a name, zero behind a shorter one, as two numbers.
struct tag_key {
    static constexpr std::size_t bytes = 16;

    constexpr bool operator==(const tag_key &) const = default;

    std::uint64_t low = 0;
    std::uint64_t high = 0;
};

/// An element name as a reader gets it. At least 16 bytes of it can be read, and those behind a shorter name
/// are zero: comparing two numbers is then comparing names.
struct tag_name {
    char *text = nullptr; // null: none
    std::size_t length = 0;

    tag_key key() const {
        tag_key key;
        std::memcpy(&key.low, text, sizeof key.low);
        std::memcpy(&key.high, text + sizeof key.low, sizeof key.high);
        return key;
    }
};

template <class Action> struct tag_row {
    std::string_view tag;
    Action action;
};

/// Perfect hash over the rows, found when the library is compiled.
template <class Action, std::size_t Rows> class tag_table {
public:
    consteval tag_table(const tag_row<Action> (&rows)[Rows]) {
        while (!place(rows))
            if ((factor_ += 2) > most_factors)
                throw std::logic_error("no factor tells these tags apart");
    }

    /// The action of exactly this tag, or null; null for an empty one, whose key is that of a free slot.
    const Action *find(const tag_name &tag) const {
        const tag_key key = tag.key();
        const slot &place = slots_[slot_of(key)];
        return place.key == key && tag.length != 0 && tag.length <= tag_key::bytes ? &place.action : nullptr;
    }

private:
    struct slot {
        tag_key key; // zero: free
        Action action;
    };

    /// Most slots are free, so that a factor is soon found.
    static constexpr unsigned slot_bits = Rows > 16 ? 7 : 5;
    static constexpr std::uint64_t most_factors = 20001;

    static constexpr tag_key key_of(std::string_view tag) {
        if (tag.empty() || tag.size() > tag_key::bytes)
            throw std::logic_error("a tag of the table has 1 to 16 bytes");
        tag_key key;
        for (std::size_t i = 0; i < tag.size(); ++i)
            (i < 8 ? key.low : key.high) |= static_cast<std::uint64_t>(static_cast<unsigned char>(tag[i]))
                                            << i % 8 * 8;
        return key;
    }

    constexpr std::size_t slot_of(const tag_key &key) const {
        return (key.low + key.high * 31) * factor_ * golden_ratio >> (64 - slot_bits);
    }

    constexpr bool place(const tag_row<Action> (&rows)[Rows]) {
        slots_ = {};
        for (const tag_row<Action> &row : rows) {
            const tag_key key = key_of(row.tag);
            slot &place = slots_[slot_of(key)];
            if (place.key != tag_key())
                return false;
            place = {key, row.action};
        }
        return true;
    }

    std::array<slot, std::size_t{1} << slot_bits> slots_{};
    std::uint64_t factor_ = 1;
};

} // namespace zeb5

#endif
