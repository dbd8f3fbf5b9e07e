#include "parse_ev_list.h"
#include "records/family_list.h"
#include "records/record_types.h"

namespace {

struct event_family {
    using record = zeb5_ev_entry;
    using list = std::vector<record *>;
    static constexpr const record_type &type = event_entry_type;

    static int read(char *path, list *records) { return zeb5_parse_ev_list_readf(path, records); }
    static void print(const list *records) { zeb5_print_ev_list(records); }
    static void clean(list *records) {
        for (record *entry : *records)
            for (zeb5_ev_sb_list *block : *entry->sb_list)
                if (block->ch_list->empty()) { // the library does not release these
                    delete block->ch_list;
                    block->ch_list = nullptr;
                }
        zeb5_clean_ev_list(records);
    }
};

} // namespace

const record_kind event_records = {"event list", "an event list", "entries", &event_entry_type,
                                   make_list<event_family>};
