#include <algorithm>
#include <memory>

#include "document_kinds.h"
#include "failure.h"
#include "findings.h"
#include "json_records.h"
#include "output.h"
#include "round_trip.h"
#include "standard_streams.h"
#include "subcommand.h"
#include "words.h"

namespace {

struct convert_options {
    std::string file;
    std::string from = "xml";
    std::string to;
    std::string output = "-";
    bool force = false;
    bool shift = false;
    bool keep_duplicates = false;
    std::string layout; // empty: not given
};

conversion conversion_of(const convert_options &options) {
    return {options.shift, options.keep_duplicates, options.layout == "classic"};
}

/// The records to convert, and what was lost when they were read.
struct records_read {
    const record_kind *kind;
    std::unique_ptr<record_list> list;
    std::string losses; // lines
};

const form &form_of(const record_kind &kind, const convert_options &options, const std::string &name) {
    const auto found = std::find_if(kind.forms.begin(), kind.forms.end(),
                                    [&](const form &one) { return options.to == one.name; });
    if (kind.forms.empty())
        throw failure(STATUS_DOCUMENT,
                      name + ": is " + kind.with_article + ", which can be shown, checked and exported only");
    if (found == kind.forms.end())
        throw failure(STATUS_DOCUMENT, name + ": --to " + options.to + " is not for " + kind.with_article);
    return *found;
}

/// Refuses options that are given and that are not for this kind.
void require_options_for(const record_kind &kind, const convert_options &options, const std::string &name) {
    const std::pair<const char *, bool> given[] = {{"--shift", options.shift},
                                                   {"--keep-duplicates", options.keep_duplicates},
                                                   {"--layout", !options.layout.empty()}};
    for (const auto &[option, is_given] : given)
        if (is_given &&
            std::find(kind.options.begin(), kind.options.end(), std::string(option)) == kind.options.end())
            throw failure(STATUS_DOCUMENT, name + ": " + option + " is not for " + kind.with_article);
}

/// Whether a text field of the record or of its parts holds this many bytes.
bool has_capacity(const record_type &type, size_t bytes) {
    return std::any_of(type.rows.begin(), type.rows.end(), [&](const field_row &row) {
        return row.part ? has_capacity(*row.part, bytes) : row.capacity == bytes;
    });
}

records_read read_xml(const document &source, const convert_options &options) {
    const document_kind &kind = kind_of(source);
    form_of(kind, options, source.name); // refused before anything is read
    require_options_for(kind, options, source.name);
    records_read result{&kind, kind.make(conversion_of(options)), {}};
    int problems = 0;
    run_library(source.name, [&] { problems = result.list->read_to_convert(source); });
    if (problems != 0)
        throw failure(STATUS_DOCUMENT, source.name + ": not read without errors: nothing written");
    findings missed = find_missed_values(source, kind);
    std::erase_if(missed.cut, [&](const missed_value &value) { // a field of another layout
        return !has_capacity(result.list->type(), value.limit);
    });
    for (const std::vector<missed_value> *values : {&missed.split, &missed.cut})
        for (const missed_value &value : *values)
            result.losses += "zeb5xml: " + value.line;
    return result;
}

records_read read_json(const document &source, const convert_options &options) {
    const std::vector<const record_kind *> kinds = kinds_of_form(options.to);
    json_records read = read_json_records(source, kinds, conversion_of(options));
    if (!read.kind && kinds.size() > 1)
        throw failure(STATUS_DOCUMENT,
                      source.name + ": holds no record that tells which kind the " + options.to + " is of");
    records_read result{read.kind ? read.kind : kinds.front(), std::move(read.list), {}};
    if (!result.list)
        result.list = result.kind->make(conversion_of(options));
    require_options_for(*result.kind, options, source.name);
    return result;
}

/// Tells all losses. Throws failure when values are lost, unless it is forced.
void tell_losses(const document &source, const std::string &read, const round_trip_losses &written,
                 bool force) {
    write_standard_error(read);
    for (const texts *lines : {&written.accepted, &written.refused})
        for (const std::string &line : *lines)
            tell(source.name + ": " + line);
    if (!force && !(read.empty() && written.refused.empty()))
        throw failure(STATUS_DOCUMENT, source.name + ": nothing written, as values would be lost; --force "
                                                     "writes all the same");
}

int convert(const convert_options &options) {
    const document source = read_document(options.file);
    const records_read records =
        options.from == "json" ? read_json(source, options) : read_xml(source, options);
    const form &to = form_of(*records.kind, options, source.name);
    std::string text;
    int result = 0;
    run_library(source.name, [&] { result = records.list->write(to, text); });
    if (result != 0)
        throw failure(STATUS_OUTPUT, source.name + ": could not be put into that form, result " +
                                         std::to_string(result) + " of the writer");
    round_trip_losses losses;
    if (to.is_document)
        losses = find_losses(*records.list, *records.kind, conversion_of(options), to, text);
    tell_losses(source, records.losses, losses, options.force);
    write_output(options.output, text);
    return STATUS_DONE;
}

} // namespace

subcommand convert_subcommand() {
    auto options = std::make_shared<convert_options>();
    return {
        "convert",
        "Write channel descriptions or an env index dictionary in another form",
        "Channel descriptions can be had as chandescriptions or daqvariables (XML without an isodate line), "
        "table or\n"
        "summary (text); --shift and --keep-duplicates are for them. An env index dictionary can be had as\n"
        "envindexdict (XML) or table (text); --layout is for it.\n"
        "Nothing is written when FILE cannot be read without errors, or when a value would be lost: XML is "
        "read\n"
        "back before OUT is replaced, and each value that does not come back is named on standard error.\n"
        "Fields that a form never holds (daqvariables has no STREAM, DTYPE, COUNT, DB_KEY, SB_NAME and STAT) "
        "are\n"
        "named once, and the rest is written. Text cannot be read back: a table has no DTYPE, COUNT, "
        "DB_KEY,\n"
        "SB_NAME and SUBSYSTEM, a summary only name, size and first data type.\n"
        "A UTF-16 FILE goes through the file reader, which merges no duplicates under CHANDESCRIPTIONS and "
        "shifts\n"
        "no evType under DAQvariables.\n",
        {
            {"FILE", &options->file, "Document to read; - is standard input", argument::REQUIRED},
            {"--to", &options->to, "Form to write, see below", argument::REQUIRED, form_names()},
            {"--from",
             &options->from,
             "What FILE is: a document (xml, the default), or what export wrote as jsonl or json (json)",
             argument::OPTIONAL,
             {"xml", "json"}},
            {"-o,--output", &options->output, "File to write, replaced only when all is done (default: -)"},
            {"--force", &options->force, "Write even if values are lost; they are named all the same"},
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
