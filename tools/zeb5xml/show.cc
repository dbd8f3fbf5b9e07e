#include <memory>
#include <string>
#include <vector>

#include "document_kinds.h"
#include "each_file.h"
#include "failure.h"
#include "output.h"
#include "standard_streams.h"
#include "subcommand.h"
#include "words.h"

namespace {

/// Lists the records that could be read, even from a faulty document: a process would get them, too.
int show(const std::string &path, bool with_heading) {
    document source = read_document(path);
    const document_kind &kind = kind_of(source);
    std::unique_ptr<record_list> records = kind.make();
    int problems = 0;
    run_library(source.name, [&] { problems = records->read(source); });
    if (with_heading)
        write_standard_output("==> " + source.name + " <==\n");
    write_standard_output(held_output({1}, [&] { records->print(); }));
    if (problems != 0)
        throw failure(STATUS_DOCUMENT, source.name + ": not read without errors: only " +
                                           counted(records->size(), kind.records) + " listed");
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
