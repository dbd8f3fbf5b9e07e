#include "chan_selector.h"

#include <cstdio>
#include <cstring>
#include <iostream>
#include <string_view>

#include "channels/chan_name_index.h"
#include "text/field_text.h"

namespace {

using namespace zeb5;

constexpr std::uint32_t slow_events =
    1U << ZEB5_EV_BOR | 1U << ZEB5_EV_EOR | 1U << ZEB5_EV_ENV | 1U << ZEB5_EV_UPD;

/// The message that two functions have in common.
void tell_no_descriptions() {
    // Kept: get_data_type(), too, names get_event_type(), as log scanners know this line
    std::cout << "get_event_type() No descroption !!!!" << std::endl;
}

/// Event types of the first channel found by this name; 0, with a message, when there is none.
std::uint32_t event_types_of(chan_name_index &names, std::string_view name) {
    if (const chan_descr_2010 *channel = names.find(EVENT_NAME, name))
        return channel->ev_type;
    std::printf("CHANNEL %.*s NOT FOUND\n", static_cast<int>(name.size()), name.data());
    return 0;
}

/// The same for the DAQ name of a channel of the list.
std::uint32_t event_types_of(chan_name_index &names, const chan_descr_2010 &channel) {
    // Kept: clients get the answer of the first channel of that name, whichever number they gave
    return event_types_of(names, field_text(channel.daq_name));
}

bool is_ml_structure(int structure) {
    // Kept: sites classify their own event types as 10 to 15, outside of the enumeration, and mean ML
    return structure == ZEB5_EV_STRUCT_ML || (structure >= 10 && structure <= 15);
}

/// Position of a channel number in a list; a negative one becomes a position behind the end of any list.
std::size_t position_of(int num) { return static_cast<unsigned>(num); }

} // namespace

chan_selector::chan_selector() : names(new chan_name_index(descr)) {}

chan_selector::~chan_selector() { clean_chan_desr_list(&descr); }

bool chan_selector::set_descriptions(std::vector<char *> *soure, int *total) {
    names->forget();
    const bool failed = get_descriptions(soure, total, &descr, shift);
    names->make_room(); // a failure may have added channels, too
    if (failed)
        return true; // Kept: clients see what was read, but find_channel() does not know its event types yet
    for (const chan_descr_2010 *channel : descr)
        ev_types |= static_cast<int>(channel->ev_type);
    return false;
}

bool chan_selector::find_channel(int ev_type, char *chan) {
    if (descr.empty())
        return true; // Kept: clients without descriptions take every channel
    // Kept: for a type above 31, callers get the bit of the type modulo 32, but the class of the type itself
    if (!(static_cast<unsigned>(ev_types) >> (static_cast<unsigned>(ev_type) % 32) & 1) || !chan)
        return false;
    const bool by_daq_name = is_found_by_daq_name(get_event_struct_type(ev_type));
    return names->find(by_daq_name ? DAQ_NAME : PROP_NAME, chan) != nullptr;
}

int chan_selector::get_event_type(char *chan) {
    if (descr.empty()) {
        tell_no_descriptions();
        return 0;
    }
    if (!chan) {
        std::printf("CHANNEL (null) NOT FOUND\n");
        return 0;
    }
    return static_cast<int>(event_types_of(*names, chan));
}

int chan_selector::get_data_type(char *chan) {
    if (descr.empty()) {
        tell_no_descriptions();
        return 0;
    }
    const chan_descr_2010 *const channel = chan ? names->find(DAQ_NAME, chan) : nullptr;
    return channel ? static_cast<int>(channel->dtype) : 0;
}

char *chan_selector::get_channel(int num) {
    const std::size_t at = position_of(num);
    if (at >= descr.size())
        return nullptr;
    names->mark_changeable(at);
    return descr[at]->daq_name;
}

char *chan_selector::get_prop(int num) {
    const std::size_t at = position_of(num);
    if (at >= descr.size())
        return nullptr;
    names->mark_changeable(at);
    return descr[at]->prop_name;
}

bool chan_selector::set_counter(int num, int cnt) {
    const std::size_t at = position_of(num);
    if (at >= descr.size())
        return true;
    descr[at]->count = cnt;
    return false;
}

int chan_selector::is_channel_slow(int num) {
    const std::size_t at = position_of(num);
    if (at >= descr.size())
        return -1;
    const std::uint32_t events = event_types_of(*names, *descr[at]);
    if (events == 0)
        return -1;
    return (events & slow_events) != 0;
}

int chan_selector::is_channel_ml(int num) {
    const std::size_t at = position_of(num);
    if (at >= descr.size())
        return -1;
    const std::uint32_t events = event_types_of(*names, *descr[at]);
    if (events == 0)
        return -1;
    for (int type = 0; type < 32; ++type)
        if ((events >> type & 1) && is_ml_structure(get_event_struct_type(type)))
            return 1;
    return field_text(descr[at]->daq_name).find(".ML") != std::string_view::npos;
}

int chan_selector::get_subchannels(int num) {
    const int slow = is_channel_slow(num);
    if (slow != 0)
        return slow == 1;
    return static_cast<int>(descr[position_of(num)]->dims.size());
}

int chan_selector::size() { return static_cast<int>(descr.size()); }

void chan_selector::set_shift(bool new_shift) { shift = new_shift; }

void chan_selector::change_mode(int new_mode) { set_mode(new_mode); }

void chan_selector::dump() { print_zeb5_chan_descr(&descr); }
