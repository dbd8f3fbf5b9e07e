#include "convert.h"

#include <memory>

#include "SAX_Memory_Parser.h"
#include "failure.h"
#include "output.h"
#include "standard_streams.h"
#include "subcommand.h"

namespace {

/// Values are written without escaping, so a value with `&` or `<` makes the document ill-formed.
bool is_well_formed(std::string text) {
    int last = 0;
    held_output({1, 2}, [&] {
        SAX_Memory_Parser parser(text.data());
        last = parser.start();
        while (last == 0)
            last = parser.parse(nullptr, nullptr);
    });
    return last == -1;
}

int convert(const convert_options &options) {
    document source = read_document(options.file);
    const document_kind &kind = kind_of(source);
    std::string text;
    switch (kind.family) {
    case CHANNELS:
        text = convert_channels(source, options);
        break;
    case DICTIONARY:
        text = convert_dictionary(source, options);
        break;
    case EVENTS:
    case CAMERA:
        throw failure(STATUS_DOCUMENT, source.name + ": is a document of kind '" + kind.name +
                                           "', which can only be shown and checked");
    }
    write_output(options.output, text);
    if (text.compare(0, 5, "<?xml") == 0 && !is_well_formed(text))
        tell(source.name + ": warning: holds characters that XML output does not escape: "
                           "what was written is not well-formed");
    return STATUS_DONE;
}

} // namespace

void require_read(const document &source, int problems) {
    if (problems != 0)
        throw failure(STATUS_DOCUMENT, source.name + ": not read without errors: nothing written");
}

void require_written(const document &source, int result) {
    if (result != 0)
        throw failure(STATUS_OUTPUT, source.name + ": could not be put into that form, result " +
                                         std::to_string(result) + " of the writer");
}

void refuse_form(const document &source, const std::string &kind, const std::string &form) {
    throw failure(STATUS_DOCUMENT, source.name + ": " + form + " is not for " + kind);
}

subcommand convert_subcommand() {
    auto options = std::make_shared<convert_options>();
    return {
        "convert",
        "Write channel descriptions or an env index dictionary in another form",
        "Channel descriptions can be had as chandescriptions or daqvariables (XML without an isodate line), "
        "table or\n"
        "summary (text); --shift and --keep-duplicates are for them. An env index dictionary can be had as\n"
        "envindexdict (XML) or table (text); --layout is for it.\n"
        "Nothing is written when FILE cannot be read without errors. A UTF-16 FILE goes through the file "
        "reader,\n"
        "which merges no duplicates under CHANDESCRIPTIONS and shifts no evType under DAQvariables.\n",
        {
            {"FILE", &options->file, "Document to read; - is standard input", argument::REQUIRED},
            {"--to",
             &options->to,
             "Form to write, see below",
             argument::REQUIRED,
             {"chandescriptions", "daqvariables", "table", "summary", "envindexdict"}},
            {"-o,--output", &options->output, "File to write, replaced only when all is done (default: -)"},
            {"--shift", &options->shift, "Turn event and data type numbers into masks"},
            {"--keep-duplicates", &options->keep_duplicates,
             "Merge no channels of one property while reading"},
            {"--layout",
             &options->layout,
             "Cut names at 79 bytes (classic) or 255 (2010, the default)",
             argument::OPTIONAL,
             {"classic", "2010"}},
        },
        [options] { return convert(*options); }};
}
