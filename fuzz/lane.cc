/// Every byte string through the plain lane and through the XML library alone: the same steps, and the same
/// records, results and messages of every reader.

#include <algorithm>

#include "readers/documents.h"
#include "streams.h"
#include "support/every_reader.h"
#include "support/lane.h"

namespace {

enum { FROM_FILE = 1, SMALL_PARTS = 2 }; // in the last byte

constexpr const char *asked_attributes[] = {"bit", "id", "a", "Name"};

/// All elements mean something, so that all steps are seen.
zeb5::reader_row every_row(std::string_view) { return {0, true}; }

/// Everything that a reader can see of a document.
template <class Document> std::string steps_of(char *source) {
    Document document(source);
    zeb5::document_steps steps(document);
    steps.set_rows(every_row);
    std::string seen;
    while (steps.next()) {
        const zeb5::step &taken = steps.current();
        seen += '\n' + std::to_string(taken.element) + ' ' + std::string(steps.tag());
        if (taken.value)
            seen.append(" [").append(taken.text()).append("]");
        for (const char *name : asked_attributes)
            if (const auto value = steps.attribute(name))
                seen.append(" ").append(name).append("=").append(*value);
    }
    return seen + "\nerrors " + std::to_string(steps.error_count());
}

std::string steps_of(bool from_file, char *source) {
    return from_file ? steps_of<zeb5::file_document>(source) : steps_of<zeb5::memory_document>(source);
}

std::string as_text(const reading &seen) {
    return std::to_string(seen.result) + ' ' + seen.thrown + '\n' + seen.records;
}

/// Whether no byte ahead can be an error before it is scanned. Only then may the scanner look ahead less.
bool is_ascii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/// Expects the same of `read` with the plain lane and without it. The document is loaded in small parts where
/// that is allowed.
template <class Read> void compare(const char *what, bool small_parts, Read read) {
    std::string seen[2];
    captured told[2];
    for (const reading_way way : both_ways) {
        const way_in_use used(way);
        if (small_parts)
            zeb5::lane.part = 48, zeb5::lane.look_ahead = 64, zeb5::lane.most_token = 512;
        take_messages();
        seen[way] = read();
        told[way] = take_messages();
    }
    expect_same(what, seen[WITH_LANE], seen[WITHOUT_LANE]);
    expect_same("reports", told[WITH_LANE].err, told[WITHOUT_LANE].err);
    expect_same("outputs", told[WITH_LANE].out, told[WITHOUT_LANE].out);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    hold_the_platform();
    fuzz_input input(data, size);
    const unsigned choice = input.choice();
    const reader_row &reader = every_reader[input.choice() % std::size(every_reader)];
    const bool small_parts = (choice & SMALL_PARTS) && is_ascii(input.bytes());
    std::vector<char> text = input.text();
    const auto source = [&](bool from_file) { return from_file ? in_a_file(input.bytes()) : text.data(); };
    compare("steps", small_parts, [&] { return steps_of(choice & FROM_FILE, source(choice & FROM_FILE)); });
    compare(reader.name, small_parts, [&] { return as_text(reader.read(source(reader.from_file))); });
    return 0;
}
