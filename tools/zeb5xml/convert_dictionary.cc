#include "convert.h"

#include "dictionary_records.h"
#include "memory_file.h"
#include "standard_streams.h"

namespace {

enum { TEXT_TABLE = 1, XML_STRING = 3 }; // modes of the writers

template <class Layout> std::string converted(document &source, bool to_table) {
    struct entry_list {
        typename Layout::list entries;
        ~entry_list() { Layout::clean(&entries); }
    } list;
    int problems = 0;
    run_library(source.name, [&] {
        problems = source.has_nul() ? Layout::read_file(source.path.data(), &list.entries)
                                    : Layout::read_text(source.text.data(), &list.entries);
    });
    require_read(source, problems);

    std::string xml;
    memory_file table;
    int result = 0;
    std::string said = held_output({1, 2}, [&] {
        result = to_table ? Layout::write(&list.entries, table.path(), TEXT_TABLE, nullptr)
                          : Layout::write(&list.entries, nullptr, XML_STRING, &xml);
    });
    if (result != 0) // else it has only the lines of creating and closing the memory file
        write_standard_error(readable_diagnostics(said, source.name));
    require_written(source, result);
    return to_table ? table.text() : xml;
}

} // namespace

std::string convert_dictionary(document &source, const convert_options &options) {
    static const char kind[] = "an env index dictionary";
    if (options.to != "table" && options.to != "envindexdict")
        refuse_form(source, kind, "--to " + options.to);
    if (options.shift || options.keep_duplicates)
        refuse_form(source, kind, options.shift ? "--shift" : "--keep-duplicates");
    bool to_table = options.to == "table";
    return options.layout == "classic" ? converted<dictionary_classic>(source, to_table)
                                       : converted<dictionary_2010>(source, to_table);
}
