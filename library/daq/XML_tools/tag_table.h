#ifndef ZEB5_TAG_TABLE_H
#define ZEB5_TAG_TABLE_H

/// Element name to action. A reader is a table of rows; the look-up takes one comparison whatever their
/// number.

#include <array>
#include <cstdint>
#include <stdexcept>
#include <string_view>

namespace zeb5 {

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

    /// The action of exactly this tag, or null. The tag is not empty.
    const Action *find(std::string_view tag) const {
        const tag_row<Action> &row = slots_[slot(tag)];
        return row.tag == tag ? &row.action : nullptr;
    }

private:
    static constexpr unsigned slot_bits = Rows > 16 ? 7 : 5;
    static constexpr std::uint32_t most_factors = 20001;

    constexpr std::size_t slot(std::string_view tag) const {
        const auto at = [tag](std::size_t i) { return static_cast<std::uint32_t>(tag[i]); };
        const std::uint32_t key = static_cast<std::uint32_t>(tag.size()) + (at(0) << 8) +
                                  (at(tag.size() - 1) << 16) + (at(tag.size() / 2) << 24);
        return (key * factor_ * 0x9E3779B1u) >> (32 - slot_bits);
    }

    consteval bool place(const tag_row<Action> (&rows)[Rows]) {
        slots_ = {};
        for (const tag_row<Action> &row : rows) {
            tag_row<Action> &free = slots_[slot(row.tag)];
            if (!free.tag.empty())
                return false;
            free = row;
        }
        return true;
    }

    std::array<tag_row<Action>, std::size_t{1} << slot_bits> slots_{};
    std::uint32_t factor_ = 1;
};

} // namespace zeb5

#endif
