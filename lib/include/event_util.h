#ifndef ZEB5_EVENT_UTIL_H
#define ZEB5_EVENT_UTIL_H

/// Names and structure classes of event types and data block types. These three functions are resolved at run
/// time: a process or a site can replace them with its own. Those of libZEB5evutl may be called from several
/// threads at once.

#include "event.h"
#include "zeb5_export.h"

/// How the events of a type are structured.
enum ZEB5_EV_STRUCT_TYPE {
    ZEB5_EV_STRUCT_UNKNOWN = 0,
    ZEB5_EV_STRUCT_LOCAL = 1,
    ZEB5_EV_STRUCT_GLOBAL = 2,
    ZEB5_EV_STRUCT_ML = 3,
    ZEB5_EV_STRUCT_UNDEF = 4
};

/// Name of an event type: the enumerator without "ZEB5_EV_" ("HB", "28", "EVMAX"); a value that is no event
/// type is named by its decimal number. The string stays valid for the life of the process.
ZEB5_API const char *event_name_itoa(int ev_type);

/// Name of a data block type: the enumerator without "ZEB5_" ("BLOCK_BPM", "BLOCK_1CHAN_2010"); an
/// unassigned or out-of-range value is named by its decimal number. Valid for the life of the process.
ZEB5_API const char *block_name_itoa(int block_type);

/// Structure class of an event type, as a ZEB5_EV_STRUCT_TYPE: ML for the two _ML types, GLOBAL for 0 to 5,
/// LOCAL for the other named types, UNDEF for 28 to 31, UNKNOWN for anything else. The result is an int
/// because a site's own library may return values outside the enumeration.
ZEB5_API int get_event_struct_type(int ev_type);

#endif
