#include "files/memory_file.h"
#include "files/standard_streams.h"
#include "records/family_list.h"
#include "records/record_types.h"
#include "zeb5xml.hpp"

namespace {

enum { TEXT_TABLE = 1, XML_STRING = 3 }; // modes of the writers

constexpr form forms[] = {
    {"envindexdict", true, XML_STRING, 0},
    {"table", false, TEXT_TABLE, 0},
};
constexpr const char *options[] = {"--layout"};

// The two record layouts, under names that are the same for both

struct classic_layout {
    using record = zeb5_env_index_dictionary_entry;
    using list = std::vector<record *>;
    static constexpr const record_type &type = classic_dictionary_entry_type;
    static constexpr auto read_file = parse_env_index_dict_readf;
    static constexpr auto read_text = parse_env_index_dict_list_read;
    static int write(list *entries, char *file, int mode, std::string *xml) {
        return dump_env_index_dict(entries, file, mode, -1, xml);
    }
};

struct layout_2010 {
    using record = zeb5_env_index_dictionary_entry_2010;
    using list = std::vector<record *>;
    static constexpr const record_type &type = dictionary_entry_type;
    static constexpr auto read_file = parse_env_index_dict_readf_2010;
    static constexpr auto read_text = parse_env_index_dict_list_read_2010;
    static int write(list *entries, char *file, int mode, std::string *xml) {
        return dump_env_index_dict_2010(entries, file, mode, -1, xml);
    }
};

template <class Layout> struct dictionary_family {
    using record = typename Layout::record;
    using list = typename Layout::list;
    static constexpr const record_type &type = Layout::type;

    static int read(char *path, list *entries) { return Layout::read_file(path, entries); }
    static void print(const list *entries) {
        list copy = *entries; // the writer's parameter is not const
        Layout::write(&copy, nullptr, 0, nullptr);
    }
    static void clean(list *entries) { zeb5xml::basic_env_dictionary<record>::release_records(*entries); }

    static int read_to_convert(const document &source, list *entries, const conversion &) {
        std::string path = source.path;
        return read(path.data(), entries);
    }
    static int read_back(char *text, list *entries) { return Layout::read_text(text, entries); }
    static int write(list *entries, const form &to, std::string &text) {
        if (to.mode == XML_STRING)
            return Layout::write(entries, nullptr, to.mode, &text);
        memory_file table; // tables go to files only
        int result = 0;
        const std::string said =
            held_output({1, 2}, [&] { result = Layout::write(entries, table.path(), to.mode, nullptr); });
        if (result != 0) // else it has only the lines of creating and closing the memory file
            write_standard_error(said);
        text = table.text();
        return result;
    }
};

std::unique_ptr<record_list> make(const conversion &how) {
    return how.classic_layout
               ? make_list<dictionary_family<classic_layout>>(how)
               : make_list<dictionary_family<layout_2010>>(how); // which has room for all names
}

} // namespace

const record_kind dictionary_records = {"env index dictionary",
                                        "an env index dictionary",
                                        "entries",
                                        &dictionary_entry_type,
                                        make,
                                        forms,
                                        options};
