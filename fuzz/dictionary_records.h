#ifndef FUZZ_DICTIONARY_RECORDS_H
#define FUZZ_DICTIONARY_RECORDS_H

/// Env index dictionaries in both layouts under the same names.

#include <cstdlib>
#include <cstring>
#include <set>
#include <string>
#include <vector>

#include "parse_env_index_dictionary.h"

using classic_entry = zeb5_env_index_dictionary_entry;
using entry_2010 = zeb5_env_index_dictionary_entry_2010;

/// A list that releases its entries, each once.
template <class Entry> struct dictionary {
    std::vector<Entry *> entries;

    dictionary() = default;
    ~dictionary() {
        for (Entry *entry : std::set<Entry *>(entries.begin(), entries.end()))
            free(entry);
    }
    dictionary(const dictionary &) = delete;
    dictionary &operator=(const dictionary &) = delete;

    operator std::vector<Entry *> *() { return &entries; }
    Entry *add() {
        entries.push_back(static_cast<Entry *>(calloc(1, sizeof(Entry))));
        return entries.back();
    }
    /// The bytes of all entries; the readers clear what they do not set.
    std::string image() const {
        std::string bytes;
        for (const Entry *entry : entries)
            bytes.append(reinterpret_cast<const char *>(entry), sizeof *entry);
        return bytes;
    }
};

inline int read_dictionary(char *text, std::vector<classic_entry *> *to) {
    return parse_env_index_dict_list_read(text, to);
}
inline int read_dictionary(char *text, std::vector<entry_2010 *> *to) {
    return parse_env_index_dict_list_read_2010(text, to);
}
inline int read_dictionary_file(char *path, std::vector<classic_entry *> *to) {
    return parse_env_index_dict_readf(path, to);
}
inline int read_dictionary_file(char *path, std::vector<entry_2010 *> *to) {
    return parse_env_index_dict_readf_2010(path, to);
}
inline int write_dictionary(std::vector<classic_entry *> *from, char *file, int mode, int fd,
                            std::string *text) {
    return dump_env_index_dict(from, file, mode, fd, text);
}
inline int write_dictionary(std::vector<entry_2010 *> *from, char *file, int mode, int fd,
                            std::string *text) {
    return dump_env_index_dict_2010(from, file, mode, fd, text);
}
template <class Entry> int convert_dictionary(char *text, char *file, int mode, int fd) {
    if constexpr (std::is_same_v<Entry, classic_entry>)
        return dump_env_index_dict(text, file, mode, fd);
    else
        return dump_env_index_dict_2010(text, file, mode, fd);
}

#endif
