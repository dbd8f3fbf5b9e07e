#include <memory>
#include <string>
#include <vector>

#include "document_kinds.h"
#include "each_file.h"
#include "failure.h"
#include "findings.h"
#include "output.h"
#include "standard_streams.h"
#include "subcommand.h"
#include "words.h"

namespace {

int check(const std::string &path) {
    const document source = read_document(path);
    const document_kind &kind = kind_of(source);
    std::unique_ptr<record_list> records = kind.make({});
    int problems = 0;
    std::string reports = held_output({1, 2}, [&] { problems = records->read(source); });
    write_standard_output(readable_diagnostics(reports, source.name));
    const findings missed = find_missed_values(source, kind);
    write_standard_output(lines_of(missed.split) + lines_of(missed.cut));

    std::string summary = source.name + ": " + kind.name + ", " + counted(records->size(), kind.records);
    if (problems != 0)
        summary += ", reader result " + std::to_string(problems);
    if (!missed.split.empty())
        summary += ", " + counted(missed.split.size(), "values") + " in pieces";
    if (!missed.cut.empty())
        summary += ", " + counted(missed.cut.size(), "values") + " cut";
    bool clean = problems == 0 && missed.split.empty() && missed.cut.empty();
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
            [files] { return each_file(*files, check); },
            {{"Before a document goes into operation", "zeb5xml check channels.xml events.xml"}}};
}
