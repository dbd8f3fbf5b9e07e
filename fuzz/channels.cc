/// Channel descriptions of both dialects are read from memory and from a file, with any flags, and the
/// records are used. The two functions that read and do more are compared with the single calls that they
/// stand for.

#include "fuzz.h"
#include "support/channel_records.h"

namespace {

enum { FROM_FILE = 1, SHIFT = 2, DELETE_DUPLICATED = 4, TWICE = 8, MERGE = 16, FORCE = 32 };
enum { CALL = 64 }; // the bits from here on choose the call
enum { USE_LIST, CONVERT, LOAD_MASTER };
enum { XML = 2 }; // a value of `mode`

void read(const fuzz_input &input, unsigned choice, channel_list &list) {
    const bool shift = choice & SHIFT, delete_duplicated = choice & DELETE_DUPLICATED;
    if (choice & FROM_FILE)
        parse_descr_list_readf(in_a_file(input.bytes()), list, shift, delete_duplicated);
    else
        parse_descr_list_read(input.text().data(), list, shift, delete_duplicated);
}

void use_list(const fuzz_input &input, unsigned choice) {
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
}

/// Documents go to a descriptor, as those in a file have a date.
void convert(const fuzz_input &input, int mode, int format) {
    static memory_file out;
    char *const file = mode == XML ? nullptr : out.path();
    const int fd = mode == XML ? out.fd() : -1;
    std::vector<char> text = input.text();
    const int converted = dump_chan_desr_from_xml(text.data(), file, mode, format, fd);
    const std::string seen = out.take();
    channel_list list;
    const bool unread = parse_descr_list_read(text.data(), list, true, true) != 0;
    expect(converted == (unread ? 3 : dump_chan_desr(list, file, mode, format, fd, nullptr, nullptr)),
           "a conversion reads and writes");
    expect_same("conversion and its parts", seen, out.take());
}

void load_master(const fuzz_input &input) {
    char *const path = in_a_file(input.bytes());
    channel_list master, file;
    expect(zeb5_load_master_daq_channel_description_file(master, path) ==
               parse_descr_list_readf(path, file, false, true),
           "a master file is read as any file");
    expect_same("channels of a master file", describe(master.records), describe(file.records));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    hold_the_platform();
    fuzz_input input(data, size);
    const unsigned choice = input.choice();
    switch (choice / CALL) {
    case CONVERT:
        convert(input, static_cast<int>(choice % 4), static_cast<int>(choice / 4 % 3));
        break;
    case LOAD_MASTER:
        load_master(input);
        break;
    default:
        use_list(input, choice);
    }
    return 0;
}
