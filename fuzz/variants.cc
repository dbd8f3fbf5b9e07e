/// The memory form and the file form of each reader read the same document. Results, records and messages
/// must be the same, except for the intended differences.

#include <cstring>

#include "SAX_Memory_Parser.h"
#include "elements/chan_descr_tags.h"
#include "streams.h"
#include "support/channel_records.h"
#include "support/env_dictionary_records.h"
#include "support/event_list_records.h"
#include "support/reader_forms.h"

namespace {

enum { COUNT_OF_KINDS = 4, SHIFT = 4, DELETE_DUPLICATED = 8 }; // parts of the last byte

struct two_forms {
    std::vector<char> text; // what the memory form reads, up to the NUL that ends it
    char *path;

    explicit two_forms(const fuzz_input &input)
        : text(input.text()), path(in_a_file(std::string_view(text.data(), text.size() - 1))) {}
};

/// What a call tells, its result included.
template <class Call> captured told_by(Call &&call) {
    take_messages();
    const int result = call();
    captured told = take_messages();
    told.err = "result " + std::to_string(result) + '\n' + told.err;
    return told;
}

/// The name of the document may stand in it, too.
std::string with_one_name(const two_forms &forms, const std::string &text) {
    return replace_all(replace_all(text, forms.path, "DOCUMENT"), "my_mem_info", "DOCUMENT");
}

void expect_same(const two_forms &forms, const captured &memory, const captured &file) {
    ::expect_same("results or reports", with_one_name(forms, memory.err), with_one_name(forms, file.err));
    ::expect_same("outputs", memory.out, file.out);
}

template <class Memory, class File> void compare(two_forms &forms, Memory memory, File file) {
    const captured of_memory = told_by([&] { return memory(forms.text.data()); });
    const captured of_file = told_by([&] { return file(forms.path); });
    expect_same(forms, of_memory, of_file);
}

bool is_daq_variables(std::vector<char> text) {
    SAX_Memory_Parser parser(text.data());
    char *root = nullptr;
    return parser.start() == 0 && parser.parse(&root, nullptr) == 0 && root &&
           std::strcmp(root, zeb5::daq_tags::root) == 0;
}

/// Only the memory form obeys `shift` for DAQvariables, and `delete_duplicated` for other documents. Three
/// more differences are intended, for DAQvariables only: the message about a missing attribute, the message
/// about a bit without a title, and what a repeated property adds to the event types.
void compare_channels(two_forms &forms, bool shift, bool delete_duplicated) {
    const bool daq = is_daq_variables(forms.text);
    channel_list memory, file;
    captured of_memory = told_by([&] {
        return parse_descr_list_read(forms.text.data(), memory, shift && !daq, delete_duplicated && daq);
    });
    const captured of_file =
        told_by([&] { return parse_descr_list_readf(forms.path, file, shift, delete_duplicated); });
    if (daq) {
        of_memory.out.clear();
        of_memory.err = replace_all(of_memory.err, "No attributebit", "No attribute: bit");
    }
    expect_same(forms, of_memory, of_file);
    expect(memory.records.size() == file.records.size(), "both forms list as many channels");
    for (std::size_t i = 0; daq && i < memory.records.size(); ++i) {
        const std::uint32_t ev_type = memory.records[i]->ev_type;
        expect((file.records[i]->ev_type & ev_type) == ev_type, "a file's event types only add up");
        file.records[i]->ev_type = ev_type;
    }
    ::expect_same("channels", describe(memory.records), describe(file.records));
}

void compare_events(two_forms &forms) {
    event_list memory, file;
    compare(
        forms, [&](char *text) { return zeb5_parse_ev_list_read(text, &memory.entries); },
        [&](char *path) { return zeb5_parse_ev_list_readf(path, &file.entries); });
    take_messages();
    zeb5_print_ev_list(&memory.entries);
    const captured of_memory = take_messages();
    zeb5_print_ev_list(&file.entries);
    expect_same(forms, of_memory, take_messages());
}

/// The bytes of all entries; the readers clear what they do not set.
template <class Entry> std::string image(const std::vector<Entry *> &entries) {
    std::string bytes;
    for (const Entry *entry : entries)
        bytes.append(reinterpret_cast<const char *>(entry), sizeof *entry);
    return bytes;
}

template <class Layout> void compare_dictionaries(two_forms &forms) {
    dictionary<Layout> memory, file;
    compare(
        forms, [&](char *text) { return Layout::read_memory(text, &memory.entries); },
        [&](char *path) { return Layout::read_file(path, &file.entries); });
    expect(image(memory.entries) == image(file.entries), "both forms give the same entries");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    hold_the_platform();
    fuzz_input input(data, size);
    const unsigned choice = input.choice();
    two_forms forms(input);
    switch (choice % COUNT_OF_KINDS) {
    case 0:
        compare_channels(forms, choice & SHIFT, choice & DELETE_DUPLICATED);
        break;
    case 1:
        compare_events(forms);
        break;
    case 2:
        compare_dictionaries<classic_layout>(forms);
        break;
    case 3:
        compare_dictionaries<layout_2010>(forms);
        break;
    }
    return 0;
}
