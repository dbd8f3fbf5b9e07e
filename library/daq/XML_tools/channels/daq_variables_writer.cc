#include "channels/daq_variables_writer.h"

#include "channels/chan_descr_parts.h"
#include "text/field_text.h"

namespace zeb5 {

namespace {

const element_tags &daq_element(const chan_descr_2010 &channel) {
    if (channel.max_size != 1)
        return daq_tag<daq_tags::matrix_channel>;
    return channel.bits.empty() ? daq_tag<daq_tags::float_channel> : daq_tag<daq_tags::bits_channel>;
}

bool has_own_frequency(std::uint32_t ev_type) {
    // Kept: sites are asked about the whole mask as if it were one event type, and answer for it. They are
    // asked again after any answer but LOCAL.
    const auto is_of = [mask = static_cast<int>(ev_type)](int type) {
        return get_event_struct_type(mask) == type;
    };
    return is_of(ZEB5_EV_STRUCT_LOCAL) || is_of(ZEB5_EV_STRUCT_ML);
}

struct daq_bit_number {
    static constexpr short_piece start = short_piece({"<", daq_tags::bit, " ", daq_tags::bit_number, "=\""});
    static constexpr short_piece end = short_piece({"\">"});
};

struct daq_bit_text {
    static constexpr short_piece start = short_piece({});
    static constexpr short_piece end = daq_tag<daq_tags::bit>.end;
};

void write_daq_bit(xml_text &out, const bit_descr &part) {
    const auto &[bit, bit_name, bit_desc] = part;
    // Kept: readers take the description for the bit's name; the name itself is not written
    out.put(framed<daq_bit_number>(bit), framed<daq_bit_text>(bit_desc));
}

struct daq_dim_number {
    static constexpr short_piece start = short_piece({"<", daq_tags::dim, " ", daq_tags::dim_id, "=\""});
    static constexpr short_piece end = short_piece({"\">\n"});
};

void write_daq_dim(xml_text &out, const dim_descr &part) {
    const auto &[dim, dim_name, dim_desc, units, nstats, stats] = part;
    out.put(framed<daq_dim_number>(dim), element<daq_tag<daq_tags::dim_name>>(dim_name),
            element<daq_tag<daq_tags::description>>(dim_desc), element<daq_tag<daq_tags::units>>(units),
            closing<daq_tag<daq_tags::dim>>());
}

} // namespace

void write_daq_variable(xml_text &out, const chan_descr_2010 &channel) {
    const auto &[stream, ev_type, count, dtype, db_key, prop_name, daq_name, prop_desc, units, max_size,
                 nbits, bits, ndims, dims, sb_name, set_point, subsystem] = channel;
    out.open(daq_element(channel));
    out.put(element<daq_tag<daq_tags::ev_type>>(ev_type), element<daq_tag<daq_tags::prop>>(prop_name),
            element<daq_tag<daq_tags::daq_name>>(name_or_undefined(daq_name)),
            element<daq_tag<daq_tags::db_key>>(db_key), element<daq_tag<daq_tags::set_point>>(set_point),
            element<daq_tag<daq_tags::sb_name>>(sb_name), element<daq_tag<daq_tags::subsystem>>(subsystem),
            element<daq_tag<daq_tags::description>>(prop_desc), element<daq_tag<daq_tags::units>>(units));
    if (max_size > 1) {
        out.put(element<daq_tag<daq_tags::first_index>>(0),
                element<daq_tag<daq_tags::last_index>>(max_size - 1));
    }
    for_each_part(bits, [&](const bit_descr &bit) { write_daq_bit(out, bit); });
    for_each_part(dims, [&](const dim_descr &dim) { write_daq_dim(out, dim); });
    out.put(element<daq_tag<daq_tags::freq>>(has_own_frequency(ev_type) ? -1 : 1));
    out.close(daq_element(channel));
}

} // namespace zeb5
