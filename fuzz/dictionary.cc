/// Env index dictionaries in both layouts: the readers, the writers in every mode to every destination, and
/// the conversions.

#include "fuzz.h"
#include "support/env_dictionary_records.h"

namespace {

enum { FROM_FILE = 1, LAYOUT_2010 = 2, CONVERT = 4, TO_FILE = 8, TO_FD = 16, TO_STRING = 32 };

template <class Layout> void run(const fuzz_input &input, unsigned choice, int mode) {
    static memory_file out;
    char *const file = choice & TO_FILE ? out.holding("") : nullptr;
    const int fd = choice & TO_FD ? out.fd() : -1;
    if (choice & CONVERT) {
        Layout::convert(input.text().data(), file, mode, fd);
    } else {
        dictionary<Layout> list;
        if (choice & FROM_FILE)
            Layout::read_file(in_a_file(input.bytes()), &list.entries);
        else
            Layout::read_memory(input.text().data(), &list.entries);
        std::string text;
        Layout::dump(&list.entries, file, mode, fd, choice & TO_STRING ? &text : nullptr);
    }
    out.take();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    hold_the_platform();
    fuzz_input input(data, size);
    const unsigned choice = input.choice();
    const int mode = static_cast<int>(input.choice() % 5); // 0 and 4 are none
    if (choice & LAYOUT_2010)
        run<layout_2010>(input, choice, mode);
    else
        run<classic_layout>(input, choice, mode);
    return 0;
}
