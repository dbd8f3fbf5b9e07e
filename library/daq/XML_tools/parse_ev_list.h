#ifndef ZEB5_PARSE_EV_LIST_H
#define ZEB5_PARSE_EV_LIST_H

/// Event lists (root BMR): they say which event types a consumer wants, from which server blocks, and which
/// channels of each block. Readers append to the caller's vector and never clear it. Several lists may be
/// read at the same time on different threads; one list belongs to one thread at a time.

#include <cstdint>
#include <vector>

#include "event.h"
#include "event_util.h"
#include "zeb5_export.h"

/// One server block of an event entry. Channel names are made with `new char[]`, all else with `new`.
struct zeb5_ev_sb_list {
    char sb_list[256];            // server block name, NUL-terminated, cut at 254 bytes
    std::vector<char *> *ch_list; // channels wanted from it; empty: all of them
};

/// One event type of the list.
struct zeb5_ev_entry {
    ZEB5_EVTYPE evtype;
    std::vector<zeb5_ev_sb_list *> *sb_list; // empty: no server block named
    time_stamp min_ev_time;                  // minimum event time; zero: not given
    std::uint32_t tmask;                     // trigger mask
    std::uint32_t priority;
};

/// Reads an event list in memory, NUL-terminated, and appends its entries to `list`. Returns 0 when all was
/// read, else the number of warnings and errors of the parser, plus 1 for a null text or list, a reader that
/// does not start or a wrong root. Warnings and errors are reported on standard error. Entries read before an
/// error stay in the list. An event type above 32 is dropped silently, and one that is no number is 0. Any
/// other number that cannot be converted leaves its field as it was. Masks, times and priorities are decimal,
/// or hexadecimal as 0x1F.
ZEB5_API int zeb5_parse_ev_list_read(char *xml, std::vector<zeb5_ev_entry *> *list);

/// The same for a file. A file that changes while it is read is reported and counts as one error; SECURITY.md
/// says which changes are not seen.
ZEB5_API int zeb5_parse_ev_list_readf(char *file, std::vector<zeb5_ev_entry *> *list);

/// Lists the entries on standard output; prints nothing for a null or empty vector.
ZEB5_API void zeb5_print_ev_list(const std::vector<zeb5_ev_entry *> *list);

/// Releases the entries and empties the vector. An empty `ch_list` and an entry with a null `sb_list` are not
/// released: where that would be a leak, release them before this call.
ZEB5_API void zeb5_clean_ev_list(std::vector<zeb5_ev_entry *> *list);

#endif
