#ifndef ZEB5_EVENT_LIST_ELEMENTS_H
#define ZEB5_EVENT_LIST_ELEMENTS_H

/// The elements of event lists.

#include "elements/element_row.h"
#include "parse_ev_list.h"

namespace zeb5 {

namespace event_tags {
inline constexpr char root[] = "BMR";
inline constexpr char event[] = "EVENT";
inline constexpr char type[] = "TYPE";
inline constexpr char server_block[] = "SBLOCK";
inline constexpr char channel_list[] = "CHLIST";
inline constexpr char channel[] = "CHAN";
inline constexpr char trigger_mask[] = "TMASK";
inline constexpr char seconds[] = "MINTIMESEC";
inline constexpr char microseconds[] = "MINTIMEUSEC";
inline constexpr char priority[] = "PRIORITY";
} // namespace event_tags

/// Kept: one byte less than fits; consumers compare cut names.
inline constexpr std::size_t longest_block_name = sizeof(zeb5_ev_sb_list::sb_list) - 2;

enum event_level { EVENT_LEVEL = 1, ENTRY_LEVEL, BLOCK_LEVEL, CHANNEL_LIST_LEVEL, CHANNEL_NAME_LEVEL };

template <auto Parts> const void *part_behind(const void *record, std::size_t index) {
    const auto *const parts = field_at<Parts>(record);
    return parts ? part_of_list(*parts, index) : nullptr;
}

inline std::string_view whole_text(const void *record) { return static_cast<const char *>(record); }

inline constexpr level_row event_levels[] = {
    {"document", no_level, nullptr},
    {"event", root_level, nullptr},
    {"entry", EVENT_LEVEL, listed<zeb5_ev_entry>},
    {"server block", ENTRY_LEVEL, part_behind<&zeb5_ev_entry::sb_list>},
    {"channel list", BLOCK_LEVEL, nullptr},
    {"channel", CHANNEL_LIST_LEVEL, part_behind<&zeb5_ev_sb_list::ch_list>},
};

constexpr element_row cut_behind(std::size_t length, element_row row) {
    row.size = length + 1;
    return row;
}

inline constexpr element_row event_list_rows[] = {
    opening(EVENT_LEVEL, {.name = event_tags::event}),
    missing("the event is not read",
            identity(opening(ENTRY_LEVEL,
                             within(0, ZEB5_EV_EVMAX - 1,
                                    number_row<&zeb5_ev_entry::evtype>(event_tags::type, EVENT_LEVEL))))),
    number_row<&zeb5_ev_entry::tmask>(event_tags::trigger_mask, ENTRY_LEVEL, value_kind::UNSIGNED),
    number_row<&zeb5_ev_entry::min_ev_time, &time_stamp::timeup>(event_tags::seconds, ENTRY_LEVEL,
                                                                 value_kind::UNSIGNED),
    within(0, 999'999,
           number_row<&zeb5_ev_entry::min_ev_time, &time_stamp::timelow>(event_tags::microseconds,
                                                                         ENTRY_LEVEL, value_kind::UNSIGNED)),
    number_row<&zeb5_ev_entry::priority>(event_tags::priority, ENTRY_LEVEL, value_kind::UNSIGNED),
    missing("the entry asks for the full event",
            opening(BLOCK_LEVEL, cut_behind(longest_block_name, text_row<&zeb5_ev_sb_list::sb_list>(
                                                                    event_tags::server_block, ENTRY_LEVEL)))),
    missing("the server block gives all of its channels",
            opening(CHANNEL_LIST_LEVEL, {.name = event_tags::channel_list, .level = BLOCK_LEVEL})),
    missing("the server block gives all of its channels",
            opening(CHANNEL_NAME_LEVEL, {.name = event_tags::channel,
                                         .level = CHANNEL_LIST_LEVEL,
                                         .value = value_kind::TEXT,
                                         .text = whole_text})),
};

inline constexpr document_elements event_list_elements = {event_tags::root, event_list_rows, event_levels};

} // namespace zeb5

#endif
