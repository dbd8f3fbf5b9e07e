#include <memory>
#include <string>
#include <vector>

#include "document_kinds.h"
#include "each_file.h"
#include "failure.h"
#include "field_limits.h"
#include "output.h"
#include "split_values.h"
#include "standard_streams.h"
#include "subcommand.h"
#include "words.h"

namespace {

std::string told(const document &source, const split_value &value) {
    return source.name + ": line " + std::to_string(value.line) + ": the text of " + value.element +
           " comes in " + std::to_string(value.pieces) + " pieces (" + value.causes +
           "): a reader keeps only one of them\n";
}

std::string told(const document &source, const cut_value &value) {
    return source.name + ": the text of " + value.element + " is " + std::to_string(value.length) +
           " bytes long, cut at " + std::to_string(value.limit) + value.where + ": '" + value.beginning +
           "...'\n";
}

/// Writes one line for each finding; returns their number.
template <class Finding> size_t tell_all(const document &source, const std::vector<Finding> &findings) {
    for (const Finding &finding : findings)
        write_standard_output(told(source, finding));
    return findings.size();
}

int check(const std::string &path) {
    document source = read_document(path);
    const document_kind &kind = kind_of(source);
    std::unique_ptr<record_list> records = kind.make();
    int problems = 0;
    std::string reports = held_output({1, 2}, [&] { problems = records->read(source); });
    write_standard_output(readable_diagnostics(reports, source.name));

    size_t split = 0, cut = 0;
    if (kind.root) { // the camera reader takes all text nodes and has no fields of fixed size
        if (!source.has_nul())
            split = tell_all(source, find_split_values(source.text));
        std::vector<cut_value> cut_values;
        held_output({1, 2},
                    [&] { cut_values = find_cut_values(source, kind.root); }); // reports were shown above
        cut = tell_all(source, cut_values);
    }
    std::string summary = source.name + ": " + kind.name + ", " + counted(records->size(), kind.records);
    if (problems != 0)
        summary += ", reader result " + std::to_string(problems);
    if (split != 0)
        summary += ", " + counted(split, "values") + " in pieces";
    if (cut != 0)
        summary += ", " + counted(cut, "values") + " cut";
    bool clean = problems == 0 && split == 0 && cut == 0;
    write_standard_output(summary + (clean ? ": ok\n" : "\n"));
    return clean ? STATUS_DONE : STATUS_DOCUMENT;
}

} // namespace

subcommand check_subcommand() {
    auto files = std::make_shared<std::vector<std::string>>();
    return {"check",
            "Tell what a process that reads the documents would miss",
            "Tells what the parser reports, values that arrive in pieces and values longer than their field, "
            "and\n"
            "sums up each document in one line. Values of UTF-16 documents are not looked at for pieces.\n",
            {{"FILE", files.get(), "Documents of any kind; - is standard input", argument::REQUIRED}},
            [files] { return each_file(*files, check); }};
}
