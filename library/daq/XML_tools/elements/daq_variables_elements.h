#ifndef ZEB5_DAQ_VARIABLES_ELEMENTS_H
#define ZEB5_DAQ_VARIABLES_ELEMENTS_H

/// The elements of the DAQvariables dialect of channel documents.

#include "elements/chan_descr_tags.h"
#include "elements/chan_descriptions_elements.h"
#include "elements/element_row.h"
#include "parse_chan_descr.h"

namespace zeb5 {

/// A part whose number stands in an attribute; `row` is for its text.
constexpr element_row numbered(std::string_view attribute, number_access number, std::string_view only_in,
                               element_row row) {
    row.attribute = attribute;
    row.number = number;
    row.only_in = only_in;
    return row;
}

constexpr element_row plus(int added, element_row row) {
    row.added = added;
    return row;
}

inline constexpr element_row daq_variables_rows[] = {
    unread_row(date_tag, root_level),
    opening(CHANNEL_LEVEL, {.name = daq_tags::float_channel}),
    opening(CHANNEL_LEVEL, {.name = daq_tags::bits_channel}),
    opening(CHANNEL_LEVEL, {.name = daq_tags::matrix_channel}),
    missing("the channel belongs to no event type",
            number_row<&chan_descr_2010::ev_type>(daq_tags::ev_type, CHANNEL_LEVEL, value_kind::MASK)),
    missing("the channel is not read",
            identity(text_row<&chan_descr_2010::prop_name>(daq_tags::prop, CHANNEL_LEVEL))),
    text_row<&chan_descr_2010::daq_name>(daq_tags::daq_name, CHANNEL_LEVEL),
    unread_row(daq_tags::db_key, CHANNEL_LEVEL),
    number_row<&chan_descr_2010::set_point>(daq_tags::set_point, CHANNEL_LEVEL),
    unread_row(daq_tags::sb_name, CHANNEL_LEVEL),
    text_row<&chan_descr_2010::subsystem>(daq_tags::subsystem, CHANNEL_LEVEL),
    text_row<&dim_descr::dim_desc>(daq_tags::description, DIM_LEVEL),
    text_row<&chan_descr_2010::prop_desc>(daq_tags::description, CHANNEL_LEVEL),
    text_row<&dim_descr::units>(daq_tags::units, DIM_LEVEL),
    text_row<&chan_descr_2010::units>(daq_tags::units, CHANNEL_LEVEL),
    unread_row(daq_tags::first_index, CHANNEL_LEVEL),
    missing("the size is 1",
            plus(1, within(0, std::numeric_limits<std::int32_t>::max() - 1,
                           number_row<&chan_descr_2010::max_size>(daq_tags::last_index, CHANNEL_LEVEL)))),
    numbered(daq_tags::bit_number, number_at<&bit_descr::bit>, daq_tags::bits_channel,
             opening(BIT_LEVEL, within(0, 31, text_row<&bit_descr::bit_name>(daq_tags::bit, CHANNEL_LEVEL)))),
    numbered(daq_tags::dim_id, number_at<&dim_descr::dim>, daq_tags::matrix_channel,
             opening(DIM_LEVEL, not_negative({.name = daq_tags::dim, .level = CHANNEL_LEVEL}))),
    text_row<&dim_descr::dim_name>(daq_tags::dim_name, DIM_LEVEL),
    unread_row(daq_tags::freq, CHANNEL_LEVEL),
};

inline constexpr document_elements daq_variables_elements = {daq_tags::root, daq_variables_rows,
                                                             channel_levels};

} // namespace zeb5

#endif
