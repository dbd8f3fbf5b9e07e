#include "convert.h"

#include <vector>

#include "memory_file.h"
#include "parse_chan_descr.h"
#include "standard_streams.h"

namespace {

enum { FULL_TABLE = 1, XML_DOCUMENT = 2, SUMMARY_TABLE = 3 }; // modes of dump_chan_desr()

struct form {
    const char *name;
    int mode;
    int dialect;
};
const form forms[] = {
    {"chandescriptions", XML_DOCUMENT, 0},
    {"daqvariables", XML_DOCUMENT, 1},
    {"table", FULL_TABLE, 0},
    {"summary", SUMMARY_TABLE, 0},
};

struct channel_list {
    std::vector<chan_descr_2010 *> records;
    channel_list() = default;
    ~channel_list() { clean_chan_desr_list(&records); }
    channel_list(const channel_list &) = delete;
    channel_list &operator=(const channel_list &) = delete;
};

const form &form_of(const document &source, const std::string &name) {
    for (const form &one : forms)
        if (name == one.name)
            return one;
    refuse_form(source, "channel descriptions", "--to " + name);
}

} // namespace

std::string convert_channels(document &source, const convert_options &options) {
    const form &to = form_of(source, options.to);
    if (!options.layout.empty())
        refuse_form(source, "channel descriptions", "--layout");
    channel_list list;
    int problems = 0;
    if (source.has_nul())
        tell(source.name + ": holds NUL bytes, as UTF-16 does: read with the file reader");
    run_library(source.name, [&] {
        problems = source.has_nul() ? parse_descr_list_readf(source.path.data(), &list.records, options.shift,
                                                             !options.keep_duplicates)
                                    : parse_descr_list_read(source.text.data(), &list.records, options.shift,
                                                            !options.keep_duplicates);
    });
    require_read(source, problems);

    std::string xml;
    memory_file table; // tables go to files only
    int result = 0;
    run_library(source.name, [&] {
        result = to.mode == XML_DOCUMENT
                     ? dump_chan_desr(&list.records, nullptr, to.mode, to.dialect, -1, &xml, nullptr)
                     : dump_chan_desr(&list.records, table.path(), to.mode, to.dialect, -1, nullptr, nullptr);
    });
    require_written(source, result);
    return to.mode == XML_DOCUMENT ? xml : table.text();
}
