/// Event lists from memory and from a file, read, listed and released.

#include "fuzz.h"
#include "support/event_list_records.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    hold_the_platform();
    fuzz_input input(data, size);
    const bool from_file = input.choice() & 1;
    event_list list;
    if (from_file)
        zeb5_parse_ev_list_readf(in_a_file(input.bytes()), &list.entries);
    else
        zeb5_parse_ev_list_read(input.text().data(), &list.entries);
    for (const zeb5_ev_entry *entry : list.entries)
        expect(entry->evtype >= 0 && entry->evtype <= ZEB5_EV_EVMAX, "event types are those that there are");
    zeb5_print_ev_list(&list.entries);
    return 0;
}
