#include "channels/chan_descriptions_writer.h"

namespace zeb5 {

namespace {

// Axes of spectra and images, which are given apart from the records

template <axis_number Number> constexpr element_tags axis_tag(axis_tags[Number]);

void write_spectrum(xml_text &out, const zeb5_spect_header_2010 &axis) {
    out.put_float(axis_tag<DIM_START>, axis.start, "%e");
    out.put_float(axis_tag<DIM_INC>, axis.inc, "%e");
    out.put(element<axis_tag<DIM_NDATA>>(axis.ndata), element<axis_tag<DIM_GROUPS>>(axis.groups));
    out.put_float(axis_tag<DIM_GROUP_INC>, axis.group_inc, "%e");
}

template <axis_number Number> void element_if(bool wanted, xml_text &out, std::int32_t value) {
    if (wanted)
        out.put(element<axis_tag<Number>>(value));
}

template <axis_number Number> void element_if_positive(xml_text &out, float value) {
    if (value > 0.0F)
        out.put_float(axis_tag<Number>, value, "%e");
}

template <axis_number Number> void element_if_positive(xml_text &out, std::int32_t value) {
    element_if<Number>(value > 0, out, value);
}

void write_image(xml_text &out, const zeb5_image_ext_frame_head &head) {
    out.put(element<axis_tag<DIM_XSTART>>(head.x_start),
            element<axis_tag<DIM_WIDTH>>(head.aoi_width >= 1 ? head.aoi_width : head.width));
    element_if_positive<DIM_XBIN>(out, head.hbin);
    out.put(element<axis_tag<DIM_YSTART>>(head.y_start),
            element<axis_tag<DIM_HEIGHT>>(head.aoi_height >= 1 ? head.aoi_height : head.height));
    element_if_positive<DIM_YBIN>(out, head.vbin);
    element_if_positive<DIM_BPP>(out, head.bpp);
    element_if_positive<DIM_EBITPP>(out, head.ebitpp);
    element_if<DIM_UNSIGNED>(head.ispare4 != -1, out, head.ispare4);
    element_if_positive<DIM_START>(out, head.fspare2);
    element_if_positive<DIM_INC>(out, head.fspare3);
    element_if_positive<DIM_NDATA>(out, head.ispare3);
    element_if_positive<DIM_GROUPS>(out, head.ispare2);
    element_if_positive<DIM_GROUP_INC>(out, head.fspare4);
}

/// Writes the axis with the number of one of the channel's own dimensions; nothing for a number that the
/// entry does not have.
void write_axis(xml_text &out, const dim_params &axes, std::int32_t dim) {
    if (dim < 0 || dim >= axes.num)
        return;
    // Kept: a dimension with both gives the elements of the axis twice; programs that draw spectra take the
    // first
    if (axes.params)
        write_spectrum(out, axes.params[dim]);
    if (axes.iparams)
        write_image(out, axes.iparams[dim]);
}

void write_bit(xml_text &out, const bit_descr &part) {
    const auto &[bit, bit_name, bit_desc] = part;
    out.put(opening<chan_descr_tag<TAG_PART>>(bit), element<chan_descr_tag<TAG_PART_NAME>>(bit_name),
            element<chan_descr_tag<TAG_PART_DESCR>>(bit_desc), closing<chan_descr_tag<TAG_PART>>());
}

void write_stat(xml_text &out, const stat_descr &part) {
    const auto &[stat, stat_name, stat_desc, units] = part;
    out.put(opening<chan_descr_tag<TAG_PART, OF_STAT>>(stat),
            element<chan_descr_tag<TAG_PART_NAME, OF_STAT>>(stat_name),
            element<chan_descr_tag<TAG_UNITS, OF_STAT>>(units),
            element<chan_descr_tag<TAG_PART_DESCR, OF_STAT>>(stat_desc),
            closing<chan_descr_tag<TAG_PART, OF_STAT>>());
}

void write_dim(xml_text &out, const dim_descr &part, const dim_params *axes) {
    const auto &[dim, dim_name, dim_desc, units, nstats, stats] = part;
    out.put(opening<chan_descr_tag<TAG_PART, OF_DIM>>(dim),
            element<chan_descr_tag<TAG_PART_NAME, OF_DIM>>(dim_name),
            element<chan_descr_tag<TAG_UNITS, OF_DIM>>(units),
            element<chan_descr_tag<TAG_PART_DESCR, OF_DIM>>(dim_desc));
    for_each_part(stats, [&](const stat_descr &stat) { write_stat(out, stat); });
    if (axes)
        write_axis(out, *axes, dim);
    out.close(chan_descr_tag<TAG_PART, OF_DIM>);
}

/// Writes dimensions for a channel that has axes but no dimensions of its own.
void write_made_up_dims(xml_text &out, const dim_params &axes, list_position position) {
    for (std::int32_t j = 0; j < axes.num; ++j) {
        out.put(opening<chan_descr_tag<TAG_PART, OF_DIM>>(j));
        if (axes.params)
            write_spectrum(out, axes.params[j]);
        // Kept: every dimension gets the image head at the channel's position in the list, as callers lay
        // them out
        if (axes.iparams)
            write_image(out, axes.iparams[position]);
        out.close(chan_descr_tag<TAG_PART, OF_DIM>);
    }
}

} // namespace

void write_chan_descr(xml_text &out, const chan_descr_2010 &channel, list_position position,
                      const axes_of_channels &all_axes) {
    const auto &[stream, ev_type, count, dtype, db_key, prop_name, daq_name, prop_desc, units, max_size,
                 nbits, bits, ndims, dims, sb_name, set_point, subsystem] = channel;
    out.put(opening<chan_descr_tag<TAG_CHANNEL>>(), element<chan_descr_tag<TAG_STREAM>>(stream),
            element<chan_descr_tag<TAG_EVTYPE>>(ev_type), element<chan_descr_tag<TAG_DTYPE>>(dtype),
            element<chan_descr_tag<TAG_DB_KEY>>(db_key), element<chan_descr_tag<TAG_COUNT>>(count),
            element<chan_descr_tag<TAG_SB_NAME>>(sb_name), element<chan_descr_tag<TAG_PROP>>(prop_name),
            element<chan_descr_tag<TAG_NAME>>(name_or_undefined(daq_name)),
            element<chan_descr_tag<TAG_SETPOINT>>(set_point),
            element<chan_descr_tag<TAG_SUBSYSTEM>>(subsystem), element<chan_descr_tag<TAG_UNITS>>(units),
            element<chan_descr_tag<TAG_DESC>>(prop_desc), element<chan_descr_tag<TAG_SIZE>>(max_size));
    for_each_part(bits, [&](const bit_descr &bit) { write_bit(out, bit); });
    const dim_params *const axes = all_axes.find(name_or_undefined(daq_name));
    for_each_part(dims, [&](const dim_descr &dim) { write_dim(out, dim, axes); });
    if (dims.empty() && axes)
        write_made_up_dims(out, *axes, position);
    out.close(chan_descr_tag<TAG_CHANNEL>);
}

} // namespace zeb5
