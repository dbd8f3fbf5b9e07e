#ifndef ZEB5XML_DICTIONARY_RECORDS_H
#define ZEB5XML_DICTIONARY_RECORDS_H

/// Env index dictionaries in the two record layouts, under names that are the same for both.

#include <cstdlib>
#include <set>
#include <string>
#include <vector>

#include "parse_env_index_dictionary.h"
#include "record_types.h"

/// Releases each entry once: a dictionary may hold an entry twice.
template <class Record> void free_entries(std::vector<Record *> *list) {
    for (Record *entry : std::set<Record *>(list->begin(), list->end()))
        free(entry);
    list->clear();
}

struct dictionary_classic {
    using record = zeb5_env_index_dictionary_entry;
    using list = std::vector<record *>;
    static constexpr const record_type &type = classic_dictionary_entry_type;
    static int read_file(char *path, list *entries) { return parse_env_index_dict_readf(path, entries); }
    static int read_text(char *text, list *entries) { return parse_env_index_dict_list_read(text, entries); }
    static int write(list *entries, char *file_name, int mode, std::string *xml) {
        return dump_env_index_dict(entries, file_name, mode, -1, xml);
    }
    static void clean(list *entries) { free_entries(entries); }
};

struct dictionary_2010 {
    using record = zeb5_env_index_dictionary_entry_2010;
    using list = std::vector<record *>;
    static constexpr const record_type &type = dictionary_entry_type;
    static int read_file(char *path, list *entries) { return parse_env_index_dict_readf_2010(path, entries); }
    static int read_text(char *text, list *entries) {
        return parse_env_index_dict_list_read_2010(text, entries);
    }
    static int write(list *entries, char *file_name, int mode, std::string *xml) {
        return dump_env_index_dict_2010(entries, file_name, mode, -1, xml);
    }
    static void clean(list *entries) { free_entries(entries); }
};

#endif
