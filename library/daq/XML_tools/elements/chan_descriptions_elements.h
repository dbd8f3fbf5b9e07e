#ifndef ZEB5_CHAN_DESCRIPTIONS_ELEMENTS_H
#define ZEB5_CHAN_DESCRIPTIONS_ELEMENTS_H

/// The elements of the CHANDESCRIPTIONS dialect of channel documents.

#include "elements/chan_descr_tags.h"
#include "elements/element_row.h"
#include "parse_chan_descr.h"

namespace zeb5 {

/// Levels of both dialects of channel documents.
enum channel_level { CHANNEL_LEVEL = 1, BIT_LEVEL, DIM_LEVEL, STAT_LEVEL };

inline constexpr level_row channel_levels[] = {
    {"document", no_level, nullptr},
    {"channel", root_level, listed<chan_descr_2010>},
    {"bit", CHANNEL_LEVEL, part_at<&chan_descr_2010::bits>},
    {"dimension", CHANNEL_LEVEL, part_at<&chan_descr_2010::dims>},
    {"statistic", DIM_LEVEL, part_at<&dim_descr::stats>},
};

inline constexpr element_row chan_descriptions_rows[] = {
    unread_row(date_tag, root_level),
    opening(CHANNEL_LEVEL, {.name = tags[TAG_CHANNEL][OF_CHANNEL]}),
    number_row<&chan_descr_2010::stream>(tags[TAG_STREAM][OF_CHANNEL], CHANNEL_LEVEL),
    missing(
        "the channel belongs to no event type",
        number_row<&chan_descr_2010::ev_type>(tags[TAG_EVTYPE][OF_CHANNEL], CHANNEL_LEVEL, value_kind::MASK)),
    missing(
        "the channel has no block type",
        number_row<&chan_descr_2010::dtype>(tags[TAG_DTYPE][OF_CHANNEL], CHANNEL_LEVEL, value_kind::MASK)),
    number_row<&chan_descr_2010::db_key>(tags[TAG_DB_KEY][OF_CHANNEL], CHANNEL_LEVEL),
    not_negative(number_row<&chan_descr_2010::count>(tags[TAG_COUNT][OF_CHANNEL], CHANNEL_LEVEL)),
    text_row<&chan_descr_2010::sb_name>(tags[TAG_SB_NAME][OF_CHANNEL], CHANNEL_LEVEL),
    missing("the channel is not read",
            identity(text_row<&chan_descr_2010::prop_name>(tags[TAG_PROP][OF_CHANNEL], CHANNEL_LEVEL))),
    text_row<&chan_descr_2010::daq_name>(tags[TAG_NAME][OF_CHANNEL], CHANNEL_LEVEL),
    number_row<&chan_descr_2010::set_point>(tags[TAG_SETPOINT][OF_CHANNEL], CHANNEL_LEVEL),
    text_row<&chan_descr_2010::subsystem>(tags[TAG_SUBSYSTEM][OF_CHANNEL], CHANNEL_LEVEL),
    text_row<&chan_descr_2010::units>(tags[TAG_UNITS][OF_CHANNEL], CHANNEL_LEVEL),
    text_row<&chan_descr_2010::prop_desc>(tags[TAG_DESC][OF_CHANNEL], CHANNEL_LEVEL),
    missing("the size is 1",
            within(1, std::numeric_limits<std::int32_t>::max(),
                   number_row<&chan_descr_2010::max_size>(tags[TAG_SIZE][OF_CHANNEL], CHANNEL_LEVEL))),
    opening(BIT_LEVEL, within(0, 31, number_row<&bit_descr::bit>(tags[TAG_PART][OF_CHANNEL], CHANNEL_LEVEL))),
    text_row<&bit_descr::bit_name>(tags[TAG_PART_NAME][OF_CHANNEL], BIT_LEVEL),
    text_row<&bit_descr::bit_desc>(tags[TAG_PART_DESCR][OF_CHANNEL], BIT_LEVEL),
    opening(DIM_LEVEL, not_negative(number_row<&dim_descr::dim>(tags[TAG_PART][OF_DIM], CHANNEL_LEVEL))),
    text_row<&dim_descr::dim_name>(tags[TAG_PART_NAME][OF_DIM], DIM_LEVEL),
    text_row<&dim_descr::units>(tags[TAG_UNITS][OF_DIM], DIM_LEVEL),
    text_row<&dim_descr::dim_desc>(tags[TAG_PART_DESCR][OF_DIM], DIM_LEVEL),
    stray(text_row<&chan_descr_2010::prop_desc>(tags[TAG_PART_DESCR][OF_DIM], CHANNEL_LEVEL)),
    opening(STAT_LEVEL, not_negative(number_row<&stat_descr::stat>(tags[TAG_PART][OF_STAT], DIM_LEVEL))),
    text_row<&stat_descr::stat_name>(tags[TAG_PART_NAME][OF_STAT], STAT_LEVEL),
    text_row<&stat_descr::units>(tags[TAG_UNITS][OF_STAT], STAT_LEVEL),
    text_row<&stat_descr::stat_desc>(tags[TAG_PART_DESCR][OF_STAT], STAT_LEVEL),
    stray(text_row<&chan_descr_2010::prop_desc>(tags[TAG_PART_DESCR][OF_STAT], CHANNEL_LEVEL)),
    unread_row(axis_tags[DIM_START], DIM_LEVEL),
    unread_row(axis_tags[DIM_INC], DIM_LEVEL),
    unread_row(axis_tags[DIM_NDATA], DIM_LEVEL),
    unread_row(axis_tags[DIM_GROUPS], DIM_LEVEL),
    unread_row(axis_tags[DIM_GROUP_INC], DIM_LEVEL),
    unread_row(axis_tags[DIM_XSTART], DIM_LEVEL),
    unread_row(axis_tags[DIM_WIDTH], DIM_LEVEL),
    unread_row(axis_tags[DIM_YSTART], DIM_LEVEL),
    unread_row(axis_tags[DIM_XBIN], DIM_LEVEL),
    unread_row(axis_tags[DIM_HEIGHT], DIM_LEVEL),
    unread_row(axis_tags[DIM_YBIN], DIM_LEVEL),
    unread_row(axis_tags[DIM_BPP], DIM_LEVEL),
    unread_row(axis_tags[DIM_EBITPP], DIM_LEVEL),
    unread_row(axis_tags[DIM_UNSIGNED], DIM_LEVEL),
};

inline constexpr document_elements chan_descriptions_elements = {tags[TAG_ROOT][OF_CHANNEL],
                                                                 chan_descriptions_rows, channel_levels};

} // namespace zeb5

#endif
