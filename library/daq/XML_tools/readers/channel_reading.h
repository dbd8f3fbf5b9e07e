#ifndef ZEB5_CHANNEL_READING_H
#define ZEB5_CHANNEL_READING_H

/// What the readers of both dialects of channel documents share.

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "channels/chan_descr_parts.h"
#include "parse_chan_descr.h"
#include "text/name_index.h"
#include "text/number_text.h"

namespace zeb5 {

using channel_vector = std::vector<chan_descr_2010 *>;

/// The differences between reading from memory and from a file.
struct channel_variant {
    bool refuses_null_list;
    bool merges_repeated_prop; // under CHANDESCRIPTIONS, where the caller asks for it
    bool shifts_daq_ev_type;   // under DAQvariables, where the caller asks for it
    bool reports_untitled_bit; // under DAQvariables, like the two members below
    const char *no_bit_number; // begins the report of a bit without a number
    void (*merge_daq)(chan_descr_2010 &entry, const chan_descr_2010 &channel); // of the same property
};

/// Fills what is 0 in `entry` from the record of the same property; the streams of both are ORed.
void merge_unknown(chan_descr_2010 &entry, const chan_descr_2010 &channel);

/// ORs event types, data types and stream of the record of the same property into `entry`.
void merge_all(chan_descr_2010 &entry, const chan_descr_2010 &channel);

// The number in an element's text; `shift`: it is a type number, which is turned into a mask

inline std::int32_t to_int(std::string_view text) { return static_cast<std::int32_t>(to_number(text)); }
std::uint32_t to_ev_type(std::string_view text, bool shift);
std::uint32_t to_dtype(std::string_view text, bool shift);

/// Appends a new sub-record, zero in every field, and counts it.
template <class Record> Record *append_new(std::vector<Record *> &parts, std::int32_t &count) {
    return append_part(parts, count, owned<Record>(new Record{}));
}

/// The channel that elements go to, until it is in the caller's list and complete.
class channel_in_progress {
public:
    explicit channel_in_progress(channel_vector &list) : list_(list), by_prop_(list) {}

    /// From here on elements belong to a new channel; a channel that never got an identity is dropped.
    void begin() {
        channel_ = new chan_descr_2010;
        unlisted_.reset(channel_);
    }

    /// Ignores the rest of the channel.
    void skip_rest() {
        channel_ = nullptr;
        unlisted_.reset();
    }

    explicit operator bool() const { return channel_ != nullptr; }
    chan_descr_2010 *operator->() const { return channel_; }
    chan_descr_2010 &operator*() const { return *channel_; }

    /// Returns the listed record that find_chan_entry() would return, without searching the list. When there
    /// is none, appends the channel under this name and returns null.
    chan_descr_2010 *find_or_append_as(std::string_view prop);

    /// Names the channel and appends it. Kept: a further identity of a listed channel renames it and lists it
    /// again.
    void append_as(std::string_view prop);

private:
    channel_vector &list_;
    chan_descr_2010 *channel_ = nullptr;
    owned<chan_descr_2010> unlisted_; // owns it until it is listed
    name_index<chan_descr_2010, &chan_descr_2010::prop_name> by_prop_;
    std::size_t indexed_ = 0; // number of records of the list that the index covers
};

} // namespace zeb5

#endif
