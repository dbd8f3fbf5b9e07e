#include <memory>
#include <string>
#include <vector>

#include "each_file.h"
#include "failure.h"
#include "output.h"
#include "read_records.h"
#include "standard_streams.h"
#include "subcommand.h"
#include "words.h"

namespace {

/// Lists the records that could be read, even from a faulty document: a process would get them, too.
int show(const std::string &path, bool with_heading) {
    const read_records records(path);
    if (with_heading)
        write_standard_output("==> " + records.source.name + " <==\n");
    write_standard_output(held_output({1}, [&] { records.list->print(); }));
    records.require_all("only " + counted(records.list->size(), records.kind.records) + " listed");
    return STATUS_DONE;
}

} // namespace

subcommand show_subcommand() {
    auto files = std::make_shared<std::vector<std::string>>();
    return {"show",
            "List the records of documents of any kind",
            "",
            {{"FILE", files.get(), "Documents of any kind; - is standard input", argument::REQUIRED}},
            [files] {
                return each_file(*files,
                                 [&](const std::string &path) { return show(path, files->size() > 1); });
            }};
}
