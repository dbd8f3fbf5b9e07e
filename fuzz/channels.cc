/// Channel descriptions of both dialects from memory and from a file, with every choice of flags, and what
/// is done with the records afterwards.

#include "channel_records.h"
#include "fuzz.h"

namespace {

enum { FROM_FILE = 1, SHIFT = 2, DELETE_DUPLICATED = 4, TWICE = 8, MERGE = 16, FORCE = 32 };

void read(const fuzz_input &input, unsigned choice, channel_list &list) {
    const bool shift = choice & SHIFT, delete_duplicated = choice & DELETE_DUPLICATED;
    if (choice & FROM_FILE)
        parse_descr_list_readf(in_a_file(input.bytes()), list, shift, delete_duplicated);
    else
        parse_descr_list_read(input.text().data(), list, shift, delete_duplicated);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    hold_the_platform();
    fuzz_input input(data, size);
    const unsigned choice = input.choice();
    channel_list list;
    read(input, choice, list);
    if (choice & TWICE)
        read(input, choice, list);
    if (choice & MERGE) {
        channel_list others;
        read(input, choice, others);
        for (chan_descr_2010 *other : others.records)
            extend_channel_description(find_chan_entry(list, other->prop_name), other, choice & FORCE);
    }
    print_zeb5_chan_descr(list);
    return 0;
}
