#ifndef CHANNEL_RECORDS_H
#define CHANNEL_RECORDS_H

/// Channel records for tests: making them, releasing them and comparing them as text.

#include <cstdio>
#include <cstring>
#include <sstream>
#include <string>
#include <vector>

#include "parse_chan_descr.h"

/// A list that releases its records at the end.
struct channel_list {
    channel_list() = default;
    ~channel_list() { clean_chan_desr_list(&records); }
    channel_list(const channel_list &) = delete;
    channel_list &operator=(const channel_list &) = delete;

    operator std::vector<chan_descr_2010 *> *() { return &records; }
    chan_descr_2010 *add(chan_descr_2010 *record) {
        records.push_back(record);
        return record;
    }

    std::vector<chan_descr_2010 *> records;
};

template <size_t N> void set_text(char (&field)[N], const std::string &text) {
    snprintf(field, N, "%s", text.c_str());
}

inline chan_descr_2010 *make_channel(const char *prop, const char *daq = "") {
    auto *channel = new chan_descr_2010;
    set_text(channel->prop_name, prop);
    set_text(channel->daq_name, daq);
    return channel;
}

inline bit_descr *add_bit(chan_descr_2010 *channel, int bit, const char *name = "", const char *desc = "") {
    auto *added = new bit_descr();
    added->bit = bit;
    set_text(added->bit_name, name);
    set_text(added->bit_desc, desc);
    channel->bits.push_back(added);
    ++channel->nbits;
    return added;
}

inline dim_descr *add_dim(chan_descr_2010 *channel, int dim, const char *name = "", const char *desc = "",
                          const char *units = "") {
    auto *added = new dim_descr();
    added->dim = dim;
    set_text(added->dim_name, name);
    set_text(added->dim_desc, desc);
    set_text(added->units, units);
    channel->dims.push_back(added);
    ++channel->ndims;
    return added;
}

inline stat_descr *add_stat(dim_descr *dim, int stat, const char *name = "", const char *desc = "",
                            const char *units = "") {
    auto *added = new stat_descr();
    added->stat = stat;
    set_text(added->stat_name, name);
    set_text(added->stat_desc, desc);
    set_text(added->units, units);
    dim->stats.push_back(added);
    ++dim->nstats;
    return added;
}

/// The text of a field in quotes. A field without a terminating NUL is shown differently.
template <size_t N> std::string quoted(const char (&field)[N]) {
    const size_t length = strnlen(field, N);
    return '\'' + std::string(field, length) + (length < N ? "'" : " UNTERMINATED");
}

inline std::string describe(const bit_descr &bit) {
    std::ostringstream text;
    text << "  bit " << bit.bit << ' ' << quoted(bit.bit_name) << ' ' << quoted(bit.bit_desc) << '\n';
    return text.str();
}

inline std::string describe(const stat_descr &stat) {
    std::ostringstream text;
    text << "    stat " << stat.stat << ' ' << quoted(stat.stat_name) << ' ' << quoted(stat.stat_desc) << ' '
         << quoted(stat.units) << '\n';
    return text.str();
}

inline std::string describe(const dim_descr &dim) {
    std::ostringstream text;
    text << "  dim " << dim.dim << ' ' << quoted(dim.dim_name) << ' ' << quoted(dim.dim_desc) << ' '
         << quoted(dim.units) << " nstats " << dim.nstats << '\n';
    for (const stat_descr *stat : dim.stats)
        text << describe(*stat);
    return text.str();
}

/// Every field of the record and of what it holds, counts and vectors apart, as lines of text: equal text
/// means equal records, and a failed comparison shows the field.
inline std::string describe(const chan_descr_2010 &channel) {
    std::ostringstream text;
    text << "prop " << quoted(channel.prop_name) << '\n'
         << "daq " << quoted(channel.daq_name) << '\n'
         << "stream " << channel.stream << '\n'
         << std::hex << "ev_type 0x" << channel.ev_type << '\n'
         << "dtype 0x" << channel.dtype << '\n'
         << std::dec << "count " << channel.count << '\n'
         << "db_key " << channel.db_key << '\n'
         << "desc " << quoted(channel.prop_desc) << '\n'
         << "units " << quoted(channel.units) << '\n'
         << "max_size " << channel.max_size << '\n'
         << "sb_name " << quoted(channel.sb_name) << '\n'
         << "set_point " << channel.set_point << '\n'
         << "subsystem " << quoted(channel.subsystem) << '\n'
         << "nbits " << channel.nbits << '\n';
    for (const bit_descr *bit : channel.bits)
        text << describe(*bit);
    text << "ndims " << channel.ndims << '\n';
    for (const dim_descr *dim : channel.dims)
        text << describe(*dim);
    return text.str();
}

inline std::string describe(const std::vector<chan_descr_2010 *> &list) {
    std::string text;
    for (size_t i = 0; i < list.size(); ++i)
        text += "channel " + std::to_string(i) + '\n' + describe(*list[i]);
    return text;
}

#endif
