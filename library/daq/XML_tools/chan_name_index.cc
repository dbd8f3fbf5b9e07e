#include "chan_name_index.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

#include "event_util.h"
#include "narrow_text.h"

namespace zeb5 {

namespace {

template <std::size_t N> bool is_text(const char (&field)[N], std::string_view text) {
    return text.size() < N && field[text.size()] == '\0' && std::memcmp(field, text.data(), text.size()) == 0;
}

/// The half of a hash that does not say where in the table it belongs.
std::uint32_t key_of(std::size_t hash) { return static_cast<std::uint32_t>(hash >> 32); }

} // namespace

chan_name_index::chan_name_index(const std::vector<chan_descr_2010 *> &list) : list_(list) {
    latest_.reserve(window);
}

void chan_name_index::list_changed() {
    if (slots_.size() < slots_wanted())
        slots_.resize(std::bit_ceil(slots_wanted())); // here, so that no question runs out of memory
}

bool chan_name_index::matches(name_role role, const chan_descr_2010 &record, std::string_view name) const {
    switch (role) {
    case DAQ_NAME:
        return is_text(record.daq_name, name);
    case PROP_NAME:
        return is_text(record.prop_name, name);
    default:
        return (record.ev_type && is_text(record.daq_name, name)) ||
               ((record.ev_type & non_local_) && is_text(record.prop_name, name));
    }
}

/// Calls `entry(role, hash, is_event_name)` for the record's two names, until one gives false.
template <class Entry> bool chan_name_index::all_entries(const chan_descr_2010 &record, Entry entry) const {
    return entry(DAQ_NAME, hash_of(field_text(record.daq_name)), record.ev_type != 0) &&
           entry(PROP_NAME, hash_of(field_text(record.prop_name)), (record.ev_type & non_local_) != 0);
}

/// The slot of a name with this hash, or the free one where it would be.
chan_name_index::slot &chan_name_index::slot_of(std::size_t hash) {
    const std::uint32_t key = key_of(hash);
    std::size_t i = hash & (slots_.size() - 1);
    while (slots_[i].key != key &&
           (slots_[i].first[DAQ_NAME] != nowhere || slots_[i].first[PROP_NAME] != nowhere))
        i = (i + 1) & (slots_.size() - 1);
    return slots_[i];
}

void chan_name_index::fill() {
    std::fill(slots_.begin(), slots_.end(), slot{0, {nowhere, nowhere, nowhere}});
    for (place at = 0; at < list_.size(); ++at)
        all_entries(*list_[at], [this, at](name_role role, std::size_t hash, bool is_event_name) {
            slot &known = slot_of(hash);
            known.key = key_of(hash);
            known.first[role] = std::min(known.first[role], at);
            if (is_event_name)
                known.first[EVENT_NAME] = std::min(known.first[EVENT_NAME], at);
            return true;
        });
    filled_ = true;
    searches_in_vain_ = 0;
}

void chan_name_index::check(std::size_t position) {
    if (!filled_)
        return;
    const place at = static_cast<place>(position);
    filled_ = all_entries(*list_[at], [this, at](name_role role, std::size_t hash, bool is_event_name) {
        const slot &known = slot_of(hash);
        return known.first[role] <= at && (!is_event_name || known.first[EVENT_NAME] <= at);
    });
}

void chan_name_index::hand_out(std::size_t position) {
    const place at = static_cast<place>(position);
    auto known = std::find(latest_.begin(), latest_.end(), at);
    if (known == latest_.end()) {
        if (latest_.size() < window) {
            latest_.push_back(at);
        } else {
            check(std::exchange(latest_.back(), at)); // from now on left to the index
            any_older_ = true;
        }
        known = latest_.end() - 1;
    }
    std::rotate(latest_.begin(), known, known + 1);
}

/// Asked anew for every question: a site's own function may change its mind.
void chan_name_index::note_event_classes() {
    std::uint32_t non_local = 0;
    for (int type = 0; type < 32; ++type) {
        const int structure = get_event_struct_type(type);
        // Kept: a site's own classes 10 to 15 go by property, too, though the selector takes them for ML
        if (structure != ZEB5_EV_STRUCT_LOCAL && structure != ZEB5_EV_STRUCT_ML)
            non_local |= 1U << type;
    }
    if (non_local != non_local_)
        filled_ = false;
    non_local_ = non_local;
}

const chan_descr_2010 *chan_name_index::search(name_role role, std::string_view name) const {
    const auto found = std::find_if(list_.begin(), list_.end(), [&](const chan_descr_2010 *record) {
        return matches(role, *record, name);
    });
    return found == list_.end() ? nullptr : *found;
}

chan_name_index::place chan_name_index::first_handed_out(name_role role, std::string_view name,
                                                         place before) const {
    for (const place at : latest_)
        if (at < before && matches(role, *list_[at], name))
            before = at;
    return before;
}

const chan_descr_2010 *chan_name_index::find(name_role role, std::string_view name) {
    if (role == EVENT_NAME || !filled_)
        note_event_classes();
    if (slots_.size() < slots_wanted()) // memory ran out when the list grew
        return search(role, name);

    const std::size_t hash = hash_of(name);
    const auto is_wrong = [&](place at) { return at != nowhere && !matches(role, *list_[at], name); };
    if (!filled_ || is_wrong(slot_of(hash).first[role]))
        fill();
    const slot &known = slot_of(hash);
    const place indexed = known.first[role];
    const bool may_be_new = indexed == nowhere && any_older_ && searches_in_vain_ < most_in_vain;
    if (is_wrong(indexed) || may_be_new) { // two names of one hash, or a name from nowhere
        const chan_descr_2010 *const found = search(role, name);
        if (found)
            forget();
        else
            ++searches_in_vain_;
        return found;
    }
    const place first = first_handed_out(role, name, indexed);
    return first == nowhere ? nullptr : list_[first];
}

} // namespace zeb5
