#include "records/family_list.h"
#include "records/record_types.h"
#include "zeb5xml.hpp"

namespace {

struct event_family {
    using record = zeb5_ev_entry;
    using list = std::vector<record *>;
    static constexpr const record_type &type = event_entry_type;

    static int read(char *path, list *records) { return zeb5_parse_ev_list_readf(path, records); }
    static void print(const list *records) { zeb5_print_ev_list(records); }
    static void clean(list *records) { zeb5xml::event_list::release_records(*records); }
};

} // namespace

const record_kind event_records = {"event list", "an event list", "entries", &event_entry_type,
                                   make_list<event_family>};
