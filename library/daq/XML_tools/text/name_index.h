#ifndef ZEB5_NAME_INDEX_H
#define ZEB5_NAME_INDEX_H

/// Look-up of records by name, with the result of a linear search: the first record added.

#include <algorithm>
#include <bit>
#include <cstdint>
#include <string_view>
#include <vector>

#include "text/field_text.h"
#include "text/name_hash.h"

namespace zeb5 {

/// Hashes the records of a list by the text field `Name`. Nothing is copied: records must keep their places
/// in the list, which may grow. A record whose name was changed is no longer found under the old name, and is
/// found under the new one once it is added again.
template <class Record, char (Record::*Name)[256]> class name_index {
public:
    /// Adds nothing of `list` yet; `expected`: about how many records will be added.
    explicit name_index(const std::vector<Record *> &list, std::size_t expected = 0)
        : list_(list), slots_(std::bit_ceil(std::max<std::size_t>(64, 2 * expected + 2))) {}

    /// Returns the first record added whose name is exactly `name`. When there is none, `append()` must put a
    /// record of this name, cut to its field, at the end of the list; that record is added, and null is
    /// returned.
    template <class Append> Record *find_or_add(std::string_view name, Append append) {
        make_room();
        const std::uint32_t key = hash(name);
        const auto [i, is_known] = probe(name, key);
        if (is_known)
            return record_of(slots_[i]);
        append();
        if (name.size() < sizeof(list_[0]->*Name))
            fill(slots_[i], key, list_.size() - 1);
        else
            add(list_.size() - 1);
        return nullptr;
    }

    /// Adds the record at a place of the list, unless one of the same name was added before. Returns whether
    /// it was added.
    bool add(std::size_t place) {
        make_room();
        const std::string_view name = name_of(list_[place]);
        const std::uint32_t key = hash(name);
        const auto [i, is_known] = probe(name, key);
        if (!is_known)
            fill(slots_[i], key, place);
        return !is_known;
    }

private:
    /// Slots are small, as from some ten thousand names on the table does not fit in the processor's cache.
    struct slot {
        std::uint32_t key;
        std::uint32_t number; // place of the record, from 1; 0: free slot
    };

    std::uint32_t hash(std::string_view name) const {
        return static_cast<std::uint32_t>(name_hash(name, seed_));
    }

    static std::string_view name_of(const Record *record) { return field_text(record->*Name); }

    Record *record_of(const slot &taken) const { return list_[taken.number - 1]; }

    struct position {
        std::size_t slot;
        bool is_known; // whether the record of the name stands there
    };

    /// Returns the slot of the record of this name, or the slot for a new one: a free one, or that of a
    /// record that had the name and has another now. Such slots are reused as a document may rename its
    /// records again and again.
    position probe(std::string_view name, std::uint32_t key) const {
        std::size_t outdated = slots_.size();
        std::size_t i = key & (slots_.size() - 1);
        for (; slots_[i].number != 0; i = (i + 1) & (slots_.size() - 1)) {
            if (slots_[i].key != key)
                continue;
            const std::string_view known = name_of(record_of(slots_[i]));
            if (known == name)
                return {i, true};
            if (hash(known) != key)
                outdated = i;
        }
        return {outdated < slots_.size() ? outdated : i, false};
    }

    void fill(slot &taken, std::uint32_t key, std::size_t place) {
        filled_ += taken.number == 0;
        taken = {key, static_cast<std::uint32_t>(place + 1)};
    }

    void make_room() {
        if (2 * (filled_ + 1) > slots_.size())
            grow();
    }

    void grow() {
        std::vector<slot> old(2 * slots_.size());
        old.swap(slots_);
        for (const slot &entry : old)
            if (entry.number != 0)
                slots_[free_slot(entry.key)] = entry;
    }

    std::size_t free_slot(std::uint32_t key) const {
        std::size_t i = key & (slots_.size() - 1);
        while (slots_[i].number != 0)
            i = (i + 1) & (slots_.size() - 1);
        return i;
    }

    const std::vector<Record *> &list_;
    std::vector<slot> slots_; // a power of two, at least half of it free
    std::size_t filled_ = 0;
    std::size_t seed_ = reinterpret_cast<std::uintptr_t>(this);
};

} // namespace zeb5

#endif
