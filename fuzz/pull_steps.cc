/// The pull readers' calls in any order, on any document, and then all steps up to its end. The last byte of
/// the input tells the kind of reader, whether it is started first and how many calls are made; the bytes
/// before it are the calls.

#include <cstring>

#include <xercesc/util/XMLException.hpp>

#include "SAX_File_Parser.h"
#include "SAX_Memory_Parser.h"
#include "fuzz.h"

namespace {

enum { FROM_FILE = 1, NOT_STARTED = 2, COUNT_OF_CALLS = 4 }; // parts of the last byte
enum { PARSE, PARSE_TAG, PARSE_VALUE, SKIP, ATTRIBUTE, NO_ATTRIBUTE, COUNT, START, CALLS };

struct memory_source {
    std::vector<char> text;
    SAX_Memory_Parser parser;
    explicit memory_source(const fuzz_input &input) : text(input.text()), parser(text.data()) {}
    int start() { return parser.start(); }
};

struct file_source {
    char *path;
    SAX_File_Parser parser;
    explicit file_source(const fuzz_input &input) : path(in_a_file(input.bytes())) {}
    int start() { return parser.start(path); }
};

/// The texts that a pull reader returns can be read up to their NUL.
std::size_t length(const char *text) { return text ? std::strlen(text) : 0; }

template <class Parser> bool step(Parser &parser, bool with_tag, bool with_value) {
    char none[] = "", *tag = none, *value = none;
    const int result = parser.parse(with_tag ? &tag : nullptr, with_value ? &value : nullptr);
    if (result != 0)
        expect((!with_tag || !tag) && (!with_value || !value), "a step that fails hands out nothing");
    expect(length(tag) + length(value) < (1U << 20), "texts are no longer than documents");
    return result == 0;
}

template <class Parser> void ask(Parser &parser, const char *name) {
    std::string asked = name ? name : "";
    char *value;
    const int result = parser.get_attr(name ? asked.data() : nullptr, &value);
    expect((result == 0) == (value != nullptr), "an attribute is found or null");
    expect(length(value) < (1U << 20), "values are no longer than documents");
}

template <class Source> void make_call(Source &source, unsigned call) {
    static const char *const names[] = {"bit", "id", "a", "Name"};
    switch (call % CALLS) {
    case PARSE:
        return void(step(source.parser, true, true));
    case PARSE_TAG:
        return void(step(source.parser, true, false));
    case PARSE_VALUE:
        return void(step(source.parser, false, true));
    case SKIP:
        return void(step(source.parser, false, false));
    case ATTRIBUTE:
        return ask(source.parser, names[call / CALLS % 4]);
    case NO_ATTRIBUTE:
        return ask(source.parser, nullptr);
    case COUNT:
        return expect(source.parser.get_error_counter() >= 0, "reports are counted up");
    case START:
        source.start();
    }
}

template <class Source> void run(const fuzz_input &input, const std::vector<unsigned> &calls) {
    Source source(input);
    expect(source.parser.init_ok(), "the reader is ready");
    try {
        for (const unsigned call : calls)
            make_call(source, call);
        while (step(source.parser, true, true)) {
        }
    } catch (const xercesc::XMLException &) {
        // a step before the start, or one after a second start that failed, is the XML library's to refuse
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    hold_the_platform();
    fuzz_input input(data, size);
    const unsigned last = input.choice();
    std::vector<unsigned> calls;
    if (!(last & NOT_STARTED))
        calls.push_back(START);
    for (unsigned left = last / COUNT_OF_CALLS; left > 0; --left)
        calls.push_back(input.choice());
    if (last & FROM_FILE)
        run<file_source>(input, calls);
    else
        run<memory_source>(input, calls);
    return 0;
}
