#include <algorithm>
#include <fstream>
#include <memory>

#include "files/failure.h"
#include "files/standard_streams.h"
#include "losses/reading_losses.h"
#include "losses/unread_elements.h"
#include "losses/write_records.h"
#include "records/document_kinds.h"
#include "records/form_losses.h"
#include "records/json_records.h"
#include "subcommands.h"

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
    const record_kind &kind;
    const form &to;
    std::unique_ptr<record_list> list;
    std::string losses = {}; // lines
};

const form &form_of(const record_kind &kind, const convert_options &options, const std::string &name) {
    const form *found = form_named(kind, options.to);
    if (kind.forms.empty())
        throw failure(STATUS_DOCUMENT, name + ": is " + kind.with_article + ", which has no other form");
    if (!found)
        throw failure(STATUS_DOCUMENT, name + ": --to " + options.to + " is not for " + kind.with_article);
    return *found;
}

/// Options of `convert` that are for some records only, as far as they are given.
std::vector<std::string> given(const convert_options &options) {
    std::vector<std::string> names;
    for (const auto &[name, is_given] :
         {std::pair("--shift", options.shift), std::pair("--keep-duplicates", options.keep_duplicates),
          std::pair("--layout", !options.layout.empty())})
        if (is_given)
            names.emplace_back(name);
    return names;
}

void require_options_for(const record_kind &kind, const convert_options &options, const std::string &name) {
    for (const std::string &option : given(options))
        if (std::find(kind.options.begin(), kind.options.end(), option) == kind.options.end())
            throw failure(STATUS_DOCUMENT, name + ": " + option + " is not for " + kind.with_article);
}

/// The records as they stand in the document: none merged into another.
std::unique_ptr<record_list> unmerged(const document &source, const document_kind &kind, bool shift) {
    std::unique_ptr<record_list> all = kind.make({shift, true});
    held_output({1, 2}, [&] { all->read_to_convert(source); }); // nothing new is said
    return all;
}

records_read read_xml(const document &source, const convert_options &options) {
    const document_kind &kind = kind_of(source);
    const form &to = form_of(kind, options, source.name); // refused before anything is read
    require_options_for(kind, options, source.name);
    records_read result{kind, to, kind.make(conversion_of(options))};
    int problems = 0;
    run_library(source.name, [&] { problems = result.list->read_to_convert(source); });
    if (problems != 0)
        throw failure(STATUS_DOCUMENT, source.name + ": not read without errors: nothing written");
    if (to.is_document) // text has no place for these
        for (const std::string &line : unread_elements(source))
            tell(line);
    result.losses = lost_in_reading(source, result.list->type(), to);
    if (kind.writes_once && !options.keep_duplicates)
        result.losses += lost_in_merging(source, *unmerged(source, kind, options.shift), *result.list, to);
    if (options.shift)
        result.losses += lost_in_shifting(source, *unmerged(source, kind, false));
    return result;
}

records_read read_json(const document &source, const convert_options &options) {
    for (const std::string &option : given(options))
        if (option != "--layout") // the records of JSON get a layout, too
            throw failure(STATUS_DOCUMENT,
                          source.name + ": " + option + " is for XML: JSON is taken as it is");
    const std::vector<const record_kind *> kinds = kinds_of_form(options.to);
    json_records read = read_json_records(source, kinds, conversion_of(options));
    if (!read.kind && kinds.size() > 1)
        throw failure(STATUS_DOCUMENT,
                      source.name + ": holds no record that tells which kind the " + options.to + " is of");
    const record_kind &kind = read.kind ? *read.kind : *kinds.front();
    require_options_for(kind, options, source.name);
    return {kind, form_of(kind, options, source.name),
            read.list ? std::move(read.list) : kind.make(conversion_of(options))};
}

/// Whether a document begins as JSON does.
bool looks_like_json(const document &source) {
    std::ifstream file(source.path);
    const auto first = (file >> std::ws).peek();
    return first == '{' || first == '[';
}

int convert(const convert_options &options) {
    const document source = read_document(options.file);
    if (options.from == "xml" && looks_like_json(source))
        throw failure(STATUS_DOCUMENT, source.name + ": is no XML; --from json reads JSON");
    const records_read records =
        options.from == "json" ? read_json(source, options) : read_xml(source, options);
    write_records(
        {source.name, records.kind, *records.list, conversion_of(options), records.to, records.losses},
        options.output, options.force, "; --force writes all the same");
    return STATUS_DONE;
}

const char details[] =
    R"(Channel descriptions can be had as chandescriptions or daqvariables (XML without an isodate line),
table or summary (text); --shift and --keep-duplicates are for them. An env index dictionary can be
had as envindexdict (XML) or table (text); --layout is for it.
Nothing is written when FILE cannot be read without errors, or when a value would be lost. Each such
value is named on standard error: what `zeb5xml check` finds that readers drop, cut or misread, with
its rule; fields of channels that are merged into one of the same property; records of a property
that is written already; texts that break the rows of a text form, and numbers that lose digits
there; and what does not come back from XML, which is read before OUT is replaced.
Fields that a form never gives back (no reader takes STREAM, DTYPE, COUNT, DB_KEY, SB_NAME and STAT
from daqvariables), and elements that no reader takes, are named once, and the rest is written. Text
cannot be read back: a table has no DTYPE, COUNT, DB_KEY, SB_NAME and SUBSYSTEM, a summary only
name, size and the lowest bit of DTYPE, named as a type below 32.
A UTF-16 FILE goes through the file reader, which merges no duplicates under CHANDESCRIPTIONS and
shifts no evType under DAQvariables.
)";

} // namespace

subcommand convert_subcommand() {
    auto options = std::make_shared<convert_options>();
    return {"convert",
            "Write channel descriptions or an env index dictionary in another form",
            details,
            {
                {"FILE", &options->file, "Document to read; - is standard input", argument::REQUIRED},
                {"--to", &options->to, "Form to write, see below", argument::REQUIRED, form_names()},
                {"--from",
                 &options->from,
                 "What FILE is: a document (xml, the default), or what export wrote as jsonl or json (json)",
                 argument::OPTIONAL,
                 {"xml", "json"}},
                {"-o,--output",
                 &options->output,
                 "File to write, replaced only when all is done (default: -)",
                 argument::OPTIONAL,
                 {},
                 {},
                 "FILE"},
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
            [options] { return convert(*options); },
            {{"Turn type numbers into masks and write the other dialect",
              "zeb5xml convert numbers.xml --shift --to daqvariables -o variables.xml"},
             {"Bring back what was edited as JSON",
              "zeb5xml convert channels.jsonl --from json --to chandescriptions -o channels.xml"}},
            {lost_value_status}};
}
