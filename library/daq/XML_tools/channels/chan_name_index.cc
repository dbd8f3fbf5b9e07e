#include "channels/chan_name_index.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "text/byte_block.h"
#include "text/field_text.h"
#include "text/name_hash.h"

namespace zeb5 {

namespace {

constexpr std::size_t field_bytes = sizeof chan_descr_2010::daq_name;
static_assert(field_bytes == sizeof chan_descr_2010::prop_name);

} // namespace

/// A name that is compared with many others. Its last 16 bytes, or fewer for a shorter name, nearly always
/// decide. The last ones, NUL included, are taken because names of one machine begin alike.
class wanted_name {
public:
    /// `name` is shorter than the field of a record.
    explicit wanted_name(std::string_view name)
        : name_(name), at_(std::max<std::size_t>(name.size() + 1, block_bytes) - block_bytes),
          bits_((2U << std::min<std::size_t>(name.size(), block_bytes - 1)) - 1) {
        char bytes[block_bytes] = {};
        name.substr(at_).copy(bytes, block_bytes);
        block_ = load_block(bytes);
    }

    bool is_in(const char (&field)[field_bytes]) const {
        return (top_bits(load_block(field + at_) == block_) & bits_) == bits_ &&
               std::memcmp(field, name_.data(), name_.size()) == 0;
    }

    void prefetch(const char (&field)[field_bytes]) const { __builtin_prefetch(field + at_); }

private:
    std::string_view name_;
    std::size_t at_; // of the block in a field
    unsigned bits_;  // of the bytes that count
    byte_block block_;
};

namespace {

/// Whether one of the event types of a mask is neither local nor ML. The answers of a site's own function may
/// change, so it is called each time.
bool is_found_by_property(std::uint32_t event_types) {
    for (; event_types; event_types &= event_types - 1)
        if (!is_found_by_daq_name(get_event_struct_type(std::countr_zero(event_types))))
            return true;
    return false;
}

/// The two names of a record. Name 2 * n of the index is the DAQ name of the record at place n.
bool is_daq_name(name_role role, const chan_descr_2010 &record, const wanted_name &name) {
    return role != PROP_NAME && (role == DAQ_NAME || record.ev_type) && name.is_in(record.daq_name);
}

bool is_prop_name(name_role role, const chan_descr_2010 &record, const wanted_name &name) {
    return role != DAQ_NAME && name.is_in(record.prop_name) &&
           (role == PROP_NAME || is_found_by_property(record.ev_type));
}

bool matches(name_role role, const chan_descr_2010 &record, const wanted_name &name) {
    return is_daq_name(role, record, name) || is_prop_name(role, record, name);
}

/// Prefetches what a look-up will compare soon.
void prefetch(name_role role, const chan_descr_2010 &record, const wanted_name &name) {
    if (role != PROP_NAME)
        name.prefetch(record.daq_name);
    if (role != DAQ_NAME)
        name.prefetch(record.prop_name);
}

} // namespace

void chan_name_index::make_room() {
    first_.resize(std::bit_ceil(2 * list_.size()));
    next_.resize(2 * list_.size());
    changeable_.reserve(list_.size());
}

chan_name_index::number &chan_name_index::chain_of(std::string_view name) {
    return first_[name_hash(name, seed_) & (first_.size() - 1)];
}

/// Starts from the back, so that each chain has its names in the order of the list.
void chan_name_index::fill() {
    std::fill(first_.begin(), first_.end(), none);
    for (std::size_t i = next_.size(); i-- > 0;) {
        const chan_descr_2010 &record = *list_[i / 2];
        number &first = chain_of(field_text(i % 2 == 0 ? record.daq_name : record.prop_name));
        next_[i] = first;
        first = static_cast<number>(i);
    }
    is_filled_ = true;
}

void chan_name_index::mark_changeable(std::size_t position) {
    while (position > 0 && list_[position - 1] == list_[position])
        --position; // a channel of two identities stands there twice in a row
    const auto place = static_cast<number>(position);
    const auto at = std::lower_bound(changeable_.begin(), changeable_.end(), place);
    if (at != changeable_.end() && *at == place)
        return;
    if (changeable_.size() < changeable_.capacity())
        changeable_.insert(at, place);
    else // memory ran out when the list grew
        lacks_changeable_ = true;
}

chan_name_index::number chan_name_index::first_changeable(name_role role, const wanted_name &name,
                                                          number before) const {
    constexpr std::size_t ahead = 16;
    for (std::size_t i = 0; i < changeable_.size() && changeable_[i] < before; ++i) {
        if (i + ahead < changeable_.size())
            prefetch(role, *list_[changeable_[i + ahead]], name);
        if (matches(role, *list_[changeable_[i]], name))
            return changeable_[i];
    }
    return before;
}

const chan_descr_2010 *chan_name_index::find(name_role role, std::string_view text) {
    if (text.size() >= field_bytes)
        return nullptr; // no field has room for it and its NUL
    const wanted_name name(text);
    if (lacks_changeable_ || next_.size() != 2 * list_.size()) { // memory ran out when the list grew
        const auto found = std::find_if(list_.begin(), list_.end(), [&](const chan_descr_2010 *record) {
            return matches(role, *record, name);
        });
        return found == list_.end() ? nullptr : *found;
    }
    if (!is_filled_)
        fill();
    number known = chain_of(text);
    while (known != none && !(known % 2 == 0 ? is_daq_name : is_prop_name)(role, *list_[known / 2], name))
        known = next_[known];
    const number first = first_changeable(role, name, known == none ? none : known / 2);
    return first == none ? nullptr : list_[first];
}

} // namespace zeb5
