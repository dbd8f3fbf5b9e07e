#include <memory>
#include <string>
#include <vector>

#include "command_line/colour.h"
#include "files/each_file.h"
#include "files/failure.h"
#include "files/output.h"
#include "records/filters.h"
#include "records/read_records.h"
#include "subcommands.h"
#include "words/words.h"

namespace {

struct show_options {
    std::vector<std::string> files;
    record_filters filters;
    std::string color = "auto";
};

/// Lists the records that could be read, even from a faulty document: a process would get them, too.
int show(const std::string &path, const show_options &options) {
    const read_records records(path);
    options.filters.apply(*records.list, records.kind, records.source.name);
    if (options.files.size() > 1)
        write_standard_output(painter(options.color)(BOLD, "==> " + records.source.name + " <==") + "\n");
    print_to_standard_output([&] { records.list->print(); });
    records.require_all("only " + counted(records.list->size(), records.kind.records) + " listed");
    return STATUS_DONE;
}

} // namespace

subcommand show_subcommand() {
    auto options = std::make_shared<show_options>();
    std::vector<argument> arguments = {
        {"FILE", &options->files, "Documents of any kind; - is standard input", argument::REQUIRED}};
    for (const argument &one : options->filters.arguments())
        arguments.push_back(one);
    arguments.push_back(color_argument(options->color));
    return {
        "show",
        "List the records of documents of any kind",
        R"(The records are those that a process of the data acquisition gets. Of a faulty document, the records
up to the fault are listed, of a faulty camera file none. Several documents get a heading each.
)",
        arguments,
        [options] {
            return each_file(options->files, [&](const std::string &path) { return show(path, *options); });
        },
        {{"All of a document", "zeb5xml show channels.xml"},
         {"The magnets of one data stream", "zeb5xml show --subsystem 'MAG*' --stream 4 channels.xml"}}};
}
