#include <cstring>
#include <map>

#include "channels/chan_descr_parts.h"
#include "parse_chan_descr.h"
#include "text/field_text.h"

namespace {

using namespace zeb5;

/// Whether a field of `in` is overwritten by the same field of `from`. Text and counts follow the same two
/// rules.
class merge_rule {
public:
    explicit merge_rule(bool force) : force_(force) {}

    bool takes(bool set_in, bool set_from) const { return force_ ? set_from : !set_in; }

    template <class Number> void number(Number &in, Number from) const {
        if (takes(in != 0, from != 0))
            in = from;
    }

    /// A key is set when it is above 0.
    void key(std::int32_t &in, std::int32_t from) const {
        if (takes(in > 0, from > 0))
            in = from;
    }

    template <std::size_t N> void text(char (&in)[N], const char (&from)[N]) const {
        if (takes(in[0] != '\0', from[0] != '\0'))
            copy_text(in, from);
    }

private:
    bool force_;
};

void merge_fields(chan_descr_2010 &in, const chan_descr_2010 &from, bool force) {
    const auto &[stream, ev_type, count, dtype, db_key, prop_name, daq_name, prop_desc, units, max_size,
                 nbits, bits, ndims, dims, sb_name, set_point, subsystem] = from;
    const merge_rule rule(force);
    rule.number(in.stream, stream);
    rule.number(in.ev_type, ev_type);
    rule.number(in.count, count);
    rule.number(in.dtype, dtype);
    rule.number(in.max_size, max_size);
    rule.number(in.set_point, set_point);
    rule.key(in.db_key, db_key);
    rule.text(in.daq_name, daq_name);
    rule.text(in.prop_desc, prop_desc);
    rule.text(in.units, units);
    rule.text(in.sb_name, sb_name);
    rule.text(in.subsystem, subsystem);
}

void append_clone(chan_descr_2010 &in, const bit_descr *bit) {
    append_part(in.bits, in.nbits, owned<bit_descr>(zeb5_clone_bit_descr(bit)));
}

void append_clone(chan_descr_2010 &in, const dim_descr *dim) {
    append_part(in.dims, in.ndims, owned<dim_descr>(zeb5_clone_dim_descr(dim)));
}

void append_clone(dim_descr &in, const stat_descr *stat) {
    append_part(in.stats, in.nstats, owned<stat_descr>(zeb5_clone_stat_descr(stat)));
}

template <class Owner, class Part> void append_clones(Owner &in, const std::vector<Part *> &parts) {
    for (const Part *part : parts)
        append_clone(in, part);
}

/// Maps each number to the first part of a record that has it. The map is a tree, as a document could choose
/// numbers that all collide in a hash table.
template <class Part>
std::map<std::int32_t, Part *> by_number(const std::vector<Part *> &parts, std::int32_t Part::*number) {
    std::map<std::int32_t, Part *> known;
    for (Part *part : parts)
        if (part)
            known.emplace(part->*number, part);
    return known;
}

// The counts say whether there are bits, dimensions or statistics; the vectors are what is copied.

void fill_bits(chan_descr_2010 &in, const chan_descr_2010 &from) {
    if (from.nbits == 0)
        return;
    if (in.nbits == 0)
        return append_clones(in, from.bits);
    auto known = by_number(in.bits, &bit_descr::bit);
    for_each_part(from.bits, [&](const bit_descr &bit) {
        if (known.emplace(bit.bit, nullptr).second)
            append_clone(in, &bit);
    });
}

void fill_dims(chan_descr_2010 &in, const chan_descr_2010 &from) {
    if (from.ndims == 0)
        return;
    if (in.ndims == 0)
        return append_clones(in, from.dims);
    auto known = by_number(in.dims, &dim_descr::dim);
    for_each_part(from.dims, [&](const dim_descr &dim) {
        const auto [place, is_new] = known.emplace(dim.dim, nullptr);
        if (is_new) {
            append_clone(in, &dim);
            place->second = in.dims.back();
        } else if (place->second->nstats == 0 && dim.nstats != 0) {
            append_clones(*place->second, dim.stats);
        }
    });
}

// Kept: users see entries beside a count of 0 stay, with the clones after them; so in the two functions
// below.

void replace_bits(chan_descr_2010 &in, const chan_descr_2010 &from) {
    if (from.nbits == 0)
        return;
    if (in.nbits != 0) {
        for (const bit_descr *bit : in.bits)
            delete bit;
        in.bits.clear();
        in.nbits = 0;
    }
    append_clones(in, from.bits);
}

void replace_dims(chan_descr_2010 &in, const chan_descr_2010 &from) {
    if (from.ndims == 0)
        return;
    if (in.ndims != 0) {
        for (const dim_descr *dim : in.dims)
            release_dim(dim, in.prop_name);
        in.dims.clear();
        in.ndims = 0;
    }
    append_clones(in, from.dims);
}

} // namespace

bool extend_channel_description(chan_descr_2010 *in, chan_descr_2010 *from, bool force) {
    if (!in || !from || std::strcmp(in->prop_name, from->prop_name) != 0)
        return true;
    if (in == from)
        return false; // nothing to learn from itself, and replacing its bits would lose them
    merge_fields(*in, *from, force);
    (force ? replace_bits : fill_bits)(*in, *from);
    (force ? replace_dims : fill_dims)(*in, *from);
    return false;
}
