/// The look-ups of the channel selector are compared with a plain search through the same records. A channel
/// is renamed in between.

#include <algorithm>
#include <cstring>

#include "chan_selector.h"
#include "fuzz.h"
#include "support/channel_records.h"

namespace {

enum { SHIFT = 1, RENAME = 2 };

/// The first record called so; null when there is none.
const chan_descr_2010 *first_called(const channel_list &list, const char *name) {
    const auto &records = list.records;
    const auto found = std::find_if(records.begin(), records.end(), [name](const chan_descr_2010 *record) {
        return std::strcmp(record->daq_name, name) == 0;
    });
    return found == records.end() ? nullptr : *found;
}

/// Whether some channel has events of this type; the selector then looks names up.
bool has_events(const channel_list &list, int type) {
    return std::any_of(list.records.begin(), list.records.end(),
                       [type](const chan_descr_2010 *record) { return record->ev_type >> type & 1; });
}

void ask(chan_selector &selector, const channel_list &list, int number) {
    std::string name = list.records[static_cast<std::size_t>(number)]->daq_name;
    std::string prop = list.records[static_cast<std::size_t>(number)]->prop_name;
    const auto data_type = static_cast<int>(first_called(list, name.c_str())->dtype);
    expect(selector.get_data_type(name.data()) == data_type,
           "the first channel of a name tells its data type");
    for (int type = 0; type < 32; ++type) {
        const int structure = get_event_struct_type(type);
        const bool by_name = structure == ZEB5_EV_STRUCT_LOCAL || structure == ZEB5_EV_STRUCT_ML;
        const bool there = has_events(list, type);
        expect(selector.find_channel(type, by_name ? name.data() : prop.data()) == there,
               "a channel is found");
    }
    selector.get_event_type(name.data());
    selector.get_event_type(prop.data());
    selector.is_channel_slow(number);
    selector.is_channel_ml(number);
    selector.get_subchannels(number);
    expect(!selector.set_counter(number, number), "a channel that is there gets its counter");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    hold_the_platform();
    fuzz_input input(data, size);
    const unsigned choice = input.choice();
    const bool shift = choice & SHIFT;
    std::vector<char> text = input.text();
    std::vector<char *> sources = {text.data(), text.data()};

    chan_selector selector;
    selector.change_mode(EXTR_FROM_XML);
    selector.set_shift(shift);
    selector.set_descriptions(&sources, nullptr);
    channel_list list;
    descr_extractor extractor;
    extractor.set_mode(EXTR_FROM_XML);
    if (extractor.get_descriptions(&sources, nullptr, list, shift))
        return 0; // a failed source leaves the selector's own channels unsettled

    expect(selector.size() == static_cast<int>(list.records.size()), "the selector has the same channels");
    const int asked = std::min(selector.size(), 20);
    for (int i = 0; i < asked; ++i)
        ask(selector, list, i);
    if (choice & RENAME && asked > 1) {
        std::strcpy(selector.get_channel(0), "RENAMED");
        std::strcpy(list.records[0]->daq_name, "RENAMED");
        for (int i = 0; i < asked; ++i)
            ask(selector, list, i);
    }
    expect(!selector.get_channel(-1) && !selector.get_prop(selector.size()), "there are no channels outside");
    selector.dump();
    return 0;
}
