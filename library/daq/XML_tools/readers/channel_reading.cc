#include "readers/channel_reading.h"

#include "text/field_text.h"

namespace zeb5 {

namespace {

std::uint32_t mask_of(long type) { return 1U << (static_cast<unsigned long>(type) % 32); }

} // namespace

void merge_unknown(chan_descr_2010 &entry, const chan_descr_2010 &channel) {
    if (entry.ev_type == 0)
        entry.ev_type = channel.ev_type;
    entry.stream |= channel.stream;
    if (entry.dtype == 0)
        entry.dtype = channel.dtype;
}

void merge_all(chan_descr_2010 &entry, const chan_descr_2010 &channel) {
    entry.ev_type |= channel.ev_type;
    entry.stream |= channel.stream;
    entry.dtype |= channel.dtype;
}

std::uint32_t to_ev_type(std::string_view text, bool shift) {
    const long number = to_number(text);
    return shift ? mask_of(number) : static_cast<std::uint32_t>(number);
}

std::uint32_t to_dtype(std::string_view text, bool shift) {
    const long number = to_number(text);
    if (!shift)
        return static_cast<std::uint32_t>(number);
    // Kept: 63 wraps to 0, as the sum is taken in 32 bits
    return mask_of(number) + (number > 31 ? blocks_2010 : 0);
}

chan_descr_2010 *channel_in_progress::find_or_append_as(std::string_view prop) {
    for (; indexed_ < list_.size(); ++indexed_)
        if (list_[indexed_])
            by_prop_.add(indexed_);
    chan_descr_2010 *const entry = by_prop_.find_or_add(prop, [&] { append_as(prop); });
    indexed_ = list_.size();
    return entry;
}

void channel_in_progress::append_as(std::string_view prop) {
    copy_text(channel_->prop_name, prop);
    list_.push_back(channel_);
    (void)unlisted_.release(); // the list owns it from here on
}

} // namespace zeb5
