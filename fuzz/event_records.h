#ifndef FUZZ_EVENT_RECORDS_H
#define FUZZ_EVENT_RECORDS_H

#include <vector>

#include "parse_ev_list.h"

/// An event list that releases its entries, with the empty channel lists that zeb5_clean_ev_list() leaves.
struct event_entries {
    std::vector<zeb5_ev_entry *> entries;

    event_entries() = default;
    ~event_entries() {
        for (const zeb5_ev_entry *entry : entries)
            for (zeb5_ev_sb_list *block : *entry->sb_list)
                if (block->ch_list->empty()) {
                    delete block->ch_list;
                    block->ch_list = nullptr;
                }
        zeb5_clean_ev_list(&entries);
    }
    event_entries(const event_entries &) = delete;
    event_entries &operator=(const event_entries &) = delete;
};

#endif
