#ifndef EVENT_LIST_RECORDS_H
#define EVENT_LIST_RECORDS_H

/// Event lists for tests: making them, releasing them and comparing them as text.

#include <cstdio>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "parse_ev_list.h"
#include "support/channel_records.h"

/// Releases what zeb5_clean_ev_list() leaves alone, so that leak checkers see only what the library loses.
inline void release_kept_parts(std::vector<zeb5_ev_entry *> &entries) {
    std::erase_if(entries, [](const zeb5_ev_entry *entry) {
        const bool kept = !entry->sb_list;
        if (kept)
            delete entry;
        return kept;
    });
    for (const zeb5_ev_entry *entry : entries)
        for (zeb5_ev_sb_list *block : *entry->sb_list)
            if (block->ch_list && block->ch_list->empty())
                delete std::exchange(block->ch_list, nullptr);
}

/// A list that releases its entries at the end.
struct event_list {
    event_list() = default;
    ~event_list() {
        release_kept_parts(entries);
        zeb5_clean_ev_list(&entries);
    }
    event_list(const event_list &) = delete;
    event_list &operator=(const event_list &) = delete;

    std::vector<zeb5_ev_entry *> entries;
};

inline zeb5_ev_entry *add_entry(event_list &list, int type) {
    auto *entry = new zeb5_ev_entry{};
    entry->evtype = static_cast<ZEB5_EVTYPE>(type);
    entry->sb_list = new std::vector<zeb5_ev_sb_list *>;
    list.entries.push_back(entry);
    return entry;
}

inline zeb5_ev_sb_list *add_block(zeb5_ev_entry *entry, const char *name,
                                  const std::vector<const char *> &channels = {}) {
    auto *block = new zeb5_ev_sb_list{};
    set_text(block->sb_list, name);
    block->ch_list = new std::vector<char *>;
    for (const char *channel : channels)
        block->ch_list->push_back(strcpy(new char[strlen(channel) + 1], channel));
    entry->sb_list->push_back(block);
    return block;
}

/// An entry as "5 mask=16 sec=1 usec=2 prio=3 A(c1,c2) B()": fields that are 0 are left out.
inline std::string describe(const zeb5_ev_entry &entry) {
    std::underlying_type_t<ZEB5_EVTYPE> type; // a test may mean one that the enumeration does not have
    std::memcpy(&type, &entry.evtype, sizeof type);
    std::string text = std::to_string(type);
    const std::pair<const char *, std::uint32_t> fields[] = {{" mask=", entry.tmask},
                                                             {" sec=", entry.min_ev_time.timeup},
                                                             {" usec=", entry.min_ev_time.timelow},
                                                             {" prio=", entry.priority}};
    for (const auto &[name, value] : fields)
        if (value != 0)
            text += name + std::to_string(value);
    for (const zeb5_ev_sb_list *block : *entry.sb_list) {
        text += ' ' + std::string(block->sb_list, strnlen(block->sb_list, sizeof block->sb_list)) + '(';
        for (std::size_t i = 0; i < block->ch_list->size(); ++i)
            text += (i > 0 ? "," : "") + std::string((*block->ch_list)[i]);
        text += ')';
    }
    return text;
}

/// The entries, parted by "; ".
inline std::string describe(const std::vector<zeb5_ev_entry *> &entries) {
    std::string text;
    for (const zeb5_ev_entry *entry : entries)
        text += (text.empty() ? "" : "; ") + describe(*entry);
    return text;
}

#endif
