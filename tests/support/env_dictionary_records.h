#ifndef ENV_DICTIONARY_RECORDS_H
#define ENV_DICTIONARY_RECORDS_H

/// Env index dictionaries for tests, in both layouts under the same names: reading, writing, releasing and
/// comparing them as text.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "parse_env_index_dictionary.h"
#include "support/channel_records.h"

struct classic_layout {
    using entry = zeb5_env_index_dictionary_entry;
    using list = std::vector<entry *>;
    static constexpr std::size_t name_size = 80;
    static constexpr char entry_name[] = "zeb5_env_index_dictionary_entry";
    static constexpr char function[] = "dump_env_index_dict()";
    static constexpr char write_failed_line[] = "dump_env_index_dict() failed to write \n";
    static int read_memory(char *text, list *to) { return parse_env_index_dict_list_read(text, to); }
    static int read_file(char *path, list *to) { return parse_env_index_dict_readf(path, to); }
    static int dump(list *from, char *file, int mode, int fd, std::string *text) {
        return dump_env_index_dict(from, file, mode, fd, text);
    }
    static int convert(char *text, char *file, int mode, int fd) {
        return dump_env_index_dict(text, file, mode, fd);
    }
};

struct layout_2010 {
    using entry = zeb5_env_index_dictionary_entry_2010;
    using list = std::vector<entry *>;
    static constexpr std::size_t name_size = 256;
    static constexpr char entry_name[] = "zeb5_env_index_dictionary_entry_2010";
    static constexpr char function[] = "dump_env_index_dict_2010()";
    static constexpr char write_failed_line[] = "dump_env_index_dict_2010()  failed to write\n";
    static int read_memory(char *text, list *to) { return parse_env_index_dict_list_read_2010(text, to); }
    static int read_file(char *path, list *to) { return parse_env_index_dict_readf_2010(path, to); }
    static int dump(list *from, char *file, int mode, int fd, std::string *text) {
        return dump_env_index_dict_2010(from, file, mode, fd, text);
    }
    static int convert(char *text, char *file, int mode, int fd) {
        return dump_env_index_dict_2010(text, file, mode, fd);
    }
};

/// A list that releases its entries at the end, each once.
template <class Layout> struct dictionary {
    dictionary() = default;
    ~dictionary() {
        for (auto *entry : std::set<typename Layout::entry *>(entries.begin(), entries.end()))
            free(entry);
    }
    dictionary(const dictionary &) = delete;
    dictionary &operator=(const dictionary &) = delete;

    typename Layout::entry *add(int index, const std::string &prop, float abs = 0, float rel = 0) {
        auto *entry = static_cast<typename Layout::entry *>(calloc(1, sizeof(typename Layout::entry)));
        entry->index = index;
        set_text(entry->data.env_prop, prop);
        entry->data.env_ch_abs_delta = abs;
        entry->data.env_ch_rel_delta = rel;
        entries.push_back(entry);
        return entry;
    }

    typename Layout::list entries;
};

/// The entries as "3 'name' 0.5 0.25; ", deltas of 0 left out; one that stands there again as "#" and its
/// first place.
template <class Entry> std::string describe(const std::vector<Entry *> &entries) {
    std::string text;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        text += i > 0 ? "; " : "";
        const auto first = std::find(entries.begin(), entries.end(), entries[i]) - entries.begin();
        if (first != static_cast<std::ptrdiff_t>(i)) {
            text += '#' + std::to_string(first);
            continue;
        }
        const auto &data = entries[i]->data;
        text += std::to_string(entries[i]->index) + ' ' + quoted(data.env_prop);
        const char *const end = std::end(data.env_prop);
        if (std::any_of(std::find(data.env_prop, end, '\0'), end, [](char c) { return c != '\0'; }))
            text += " with something behind the NUL";
        char deltas[64] = "";
        if (data.env_ch_abs_delta != 0 || data.env_ch_rel_delta != 0)
            snprintf(deltas, sizeof deltas, " %.9g %.9g", static_cast<double>(data.env_ch_abs_delta),
                     static_cast<double>(data.env_ch_rel_delta));
        text += deltas;
    }
    return text;
}

#endif
