/// The pull readers and the channel readers are compared with the plainly written readers of the tests.
/// Steps, records, results and messages must be the same.

#include "streams.h"
#include "support/plain_channels.h"
#include "support/plain_steps.h"

#include "SAX_File_Parser.h"
#include "SAX_Memory_Parser.h"

namespace {

enum { FROM_FILE = 1, SHIFT = 2, DELETE_DUPLICATED = 4 };

constexpr const char *asked_attributes[] = {"bit", "id", "a", "none"};

void add(std::string &seen, const char *text) { seen += text ? std::string(" [") + text + ']' : " ~"; }

template <class Parser> std::string steps_of(Parser &parser, int started) {
    std::string seen;
    for (int result = started; result == 0;) {
        char *tag, *value;
        result = parser.parse(&tag, &value);
        seen += '\n' + std::to_string(result);
        add(seen, tag);
        add(seen, value);
        for (std::string name : asked_attributes) {
            parser.get_attr(name.data(), &value);
            add(seen, value);
        }
    }
    return seen + "\nerrors " + std::to_string(parser.get_error_counter());
}

std::string library_steps(reader_form form, char *source) {
    if (form == READ_FILE) {
        SAX_File_Parser parser;
        const int started = parser.start(source);
        return steps_of(parser, started);
    }
    SAX_Memory_Parser parser(source);
    const int started = parser.start();
    return steps_of(parser, started);
}

std::string plain_way_of_steps(reader_form form, char *source) {
    std::string seen;
    plain_steps steps(form, source);
    for (int result = steps.start(); result == 0;) {
        result = steps.next();
        const auto delivered = [result](const auto &text) {
            return result == 0 && text ? text->c_str() : nullptr;
        };
        seen += '\n' + std::to_string(result);
        add(seen, delivered(steps.tag));
        add(seen, delivered(steps.value));
        for (const char *name : asked_attributes) {
            const std::string *const value = steps.attribute(name);
            add(seen, value && steps.errors == 0 ? value->c_str() : nullptr);
        }
    }
    return seen + "\nerrors " + std::to_string(steps.errors);
}

void compare_steps(reader_form form, char *source) {
    const std::string seen = library_steps(form, source);
    const captured told = take_messages();
    expect_same("steps", seen, plain_way_of_steps(form, source));
    expect_same("reports", told.err, take_messages().err);
}

void compare_channels(reader_form form, char *source, bool shift, bool delete_duplicated) {
    channel_list seen, plain;
    const auto read = form == READ_FILE ? parse_descr_list_readf : parse_descr_list_read;
    const int result = read(source, seen, shift, delete_duplicated);
    const captured told = take_messages();
    const int expected = plain_channels(form, source, plain.records, shift, delete_duplicated).read();
    const captured expected_told = take_messages();
    expect_same("results", std::to_string(result), std::to_string(expected));
    expect_same("channels", describe(seen.records), describe(plain.records));
    expect_same("reports", told.err, expected_told.err);
    expect_same("outputs", told.out, expected_told.out);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    hold_the_platform();
    fuzz_input input(data, size);
    const unsigned choice = input.choice();
    if (input.bytes().find("<!E") != std::string_view::npos)
        return 0; // the plain readers know no bounds of what declarations expand to
    std::vector<char> text = input.text();
    const reader_form form = choice & FROM_FILE ? READ_FILE : READ_MEMORY;
    char *const source = form == READ_FILE ? in_a_file(input.bytes()) : text.data();
    take_messages();
    compare_steps(form, source);
    compare_channels(form, source, choice & SHIFT, choice & DELETE_DUPLICATED);
    return 0;
}
