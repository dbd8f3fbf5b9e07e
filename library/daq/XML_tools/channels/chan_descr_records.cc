#include <algorithm>
#include <cstdio>
#include <cstring>
#include <functional>
#include <iostream>
#include <memory>

#include "channels/chan_descr_parts.h"
#include "elements/chan_descr_tags.h"
#include "parse_chan_descr.h"
#include "text/field_text.h"

namespace {

using namespace zeb5;

/// Names of the types in a mask, separated by colons; cut off after 255 bytes.
std::string type_names(std::uint32_t mask, int first_type, const char *(*name_of)(int)) {
    std::string names;
    for (int bit = 0; bit < 32; ++bit) {
        if (!(mask >> bit & 1))
            continue;
        if (!names.empty())
            names += ':';
        const char *const name = name_of(first_type + bit);
        names += name ? name : "(null)"; // a site's own function may return null, which printf() shows so
    }
    names.resize(std::min<std::size_t>(names.size(), 255));
    return names;
}

std::string event_type_names(std::uint32_t ev_type) { return type_names(ev_type, 0, event_name_itoa); }

std::string block_type_names(std::uint32_t dtype) {
    return type_names(dtype & ~blocks_2010, dtype & blocks_2010 ? 32 : 0, block_name_itoa);
}

/// Whether the count is 0 though the vector has parts. The record is inconsistent then.
template <class Part> bool are_uncounted(std::int32_t count, const std::vector<Part *> &parts) {
    return count == 0 && !parts.empty();
}

constexpr char uncounted_bits[] = "ERROR: nbits = 0, but bits.size() > 0";
constexpr char uncounted_dims[] = "ERROR: ndims = 0, but dims.size() > 0";
constexpr char uncounted_stats[] = "ERROR: nstats = 0, but stats.size() > 0";

/// Prints a text after its label. When somebody has overwritten the text's NUL, the whole field is printed.
template <std::size_t N> void print_text(const char *label, const char (&field)[N]) {
    std::printf("%s%.*s\n", label, static_cast<int>(N), field);
}

void print_bits(const chan_descr_2010 &channel) {
    if (are_uncounted(channel.nbits, channel.bits))
        std::printf("%s\n", uncounted_bits);
    if (channel.nbits == 0)
        return;
    std::printf("\t\t# bits :%d\n", channel.nbits);
    for_each_part(channel.bits, [](const bit_descr &bit) {
        std::printf("\t\tbit    : %d\n", bit.bit);
        print_text("\t\tname   : ", bit.bit_name);
        print_text("\t\tdesc   : ", bit.bit_desc);
    });
}

void print_stats(const dim_descr &dim) {
    if (are_uncounted(dim.nstats, dim.stats))
        std::printf("%s\n", uncounted_stats);
    if (dim.nstats == 0)
        return;
    std::printf("\t\t\t# stats : %d\n", dim.nstats);
    for_each_part(dim.stats, [](const stat_descr &stat) {
        std::printf("\t\t\tid     : %d\n", stat.stat);
        print_text("\t\t\tname   : ", stat.stat_name);
        print_text("\t\t\tdesc   : ", stat.stat_desc);
        print_text("\t\t\tunits  : ", stat.units);
    });
}

void print_dims(const chan_descr_2010 &channel) {
    if (are_uncounted(channel.ndims, channel.dims))
        std::printf("%s\n", uncounted_dims);
    if (channel.ndims == 0)
        return;
    std::printf("\t\t# dims : %d\n", channel.ndims);
    for_each_part(channel.dims, [](const dim_descr &dim) {
        std::printf("\t\tid    : %d\n", dim.dim);
        print_text("\t\tname : ", dim.dim_name);
        print_text("\t\tdesc : ", dim.dim_desc);
        print_text("\t\tunits: ", dim.units);
        print_stats(dim);
    });
}

void print_channel(const chan_descr_2010 &channel) {
    const auto &[stream, ev_type, count, dtype, db_key, prop_name, daq_name, prop_desc, units, max_size,
                 nbits, bits, ndims, dims, sb_name, set_point, subsystem] = channel;
    std::printf(" stream   : %d \n", stream);
    std::printf(" ev type  : 0x%x %s\n", ev_type, event_type_names(ev_type).c_str());
    std::printf(" data type: 0x%x %s\n", dtype, block_type_names(dtype).c_str());
    std::printf("\tcount  :%d\n", count);
    std::printf("\tdb_key :%d\n", db_key);
    print_text("\tprop   :", prop_name);
    print_text("\tname   :", daq_name);
    std::printf("\tset_pnt:%s\n", set_point ? "yes" : "no");
    print_text("\tdesc   :", prop_desc);
    print_text("\tsb_name:", sb_name);
    print_text("\tsubsys :", subsystem);
    print_text("\tunit   :", units);
    std::printf("\tmax_sz :%d\n", max_size);
    print_bits(channel);
    print_dims(channel);
}

// Kept: parts beside a count of 0 are reported to the user and not released, as somebody else may own them;
// so in the three functions below. The vectors are empty afterwards, so that a channel that stands in its
// list twice is reported and released once.

void release_bits(chan_descr_2010 &channel) {
    if (are_uncounted(channel.nbits, channel.bits))
        std::cout << uncounted_bits << " prop: " << channel.prop_name << std::endl;
    else
        for (const bit_descr *bit : channel.bits)
            delete bit;
    channel.bits.clear();
}

void release_dims(chan_descr_2010 &channel) {
    if (are_uncounted(channel.ndims, channel.dims))
        std::cout << uncounted_dims << " prop: " << channel.prop_name << std::endl;
    else
        for (const dim_descr *dim : channel.dims)
            release_dim(dim, channel.prop_name);
    channel.dims.clear();
}

} // namespace

void zeb5::release_dim(const dim_descr *dim, const char *prop) {
    if (!dim)
        return;
    if (are_uncounted(dim->nstats, dim->stats))
        std::cout << uncounted_stats << " (" << dim->stats.size() << ") prop: " << prop << std::endl;
    else
        for (const stat_descr *stat : dim->stats)
            delete stat;
    delete dim;
}

chan_descr_2010 *find_chan_entry(const std::vector<chan_descr_2010 *> *list, const char *name) {
    if (!list || !name)
        return nullptr;
    for (chan_descr_2010 *channel : *list)
        if (channel && std::strcmp(channel->prop_name, name) == 0)
            return channel;
    return nullptr;
}

const char *get_chan_descr_root_tag(int row, int column) {
    // Kept: the rows after DTYPE are never handed out; callers end their loops on the null
    if (row < TAG_ROOT || row > TAG_DTYPE || column < OF_CHANNEL || column > OF_STAT)
        return nullptr;
    return tags[row][column];
}

bit_descr *zeb5_clone_bit_descr(const bit_descr *src) {
    if (!src)
        return nullptr;
    const auto &[bit, bit_name, bit_desc] = *src;
    auto copy = std::make_unique<bit_descr>();
    copy->bit = bit;
    copy_text(copy->bit_name, bit_name);
    copy_text(copy->bit_desc, bit_desc);
    return copy.release();
}

stat_descr *zeb5_clone_stat_descr(const stat_descr *src) {
    if (!src)
        return nullptr;
    const auto &[stat, stat_name, stat_desc, units] = *src;
    auto copy = std::make_unique<stat_descr>();
    copy->stat = stat;
    copy_text(copy->stat_name, stat_name);
    copy_text(copy->stat_desc, stat_desc);
    copy_text(copy->units, units);
    return copy.release();
}

dim_descr *zeb5_clone_dim_descr(const dim_descr *src) {
    if (!src)
        return nullptr;
    const auto &[dim, dim_name, dim_desc, units, nstats, stats] = *src;
    owned<dim_descr> copy(new dim_descr{});
    copy->dim = dim;
    copy_text(copy->dim_name, dim_name);
    copy_text(copy->dim_desc, dim_desc);
    copy_text(copy->units, units);
    for (const stat_descr *stat : stats)
        append_part(copy->stats, copy->nstats, owned<stat_descr>(zeb5_clone_stat_descr(stat)));
    return copy.release();
}

void clean_chan_desr_list(std::vector<chan_descr_2010 *> *list) {
    if (!list)
        return;
    for (chan_descr_2010 *channel : *list)
        if (channel) {
            release_bits(*channel);
            release_dims(*channel);
        }
    // Sorting finds the repeated records without allocating memory, which may have run out
    std::sort(list->begin(), list->end(), std::less<>());
    const auto end = std::unique(list->begin(), list->end());
    std::for_each(list->begin(), end, [](const chan_descr_2010 *channel) { delete channel; });
    list->clear();
}

void print_zeb5_chan_descr(const std::vector<chan_descr_2010 *> *list) {
    if (!list)
        return;
    std::printf("========================\n");
    std::printf("ZEB5 XML Channel Description (XCD)\n");
    int number = 0;
    for (const chan_descr_2010 *channel : *list) {
        const int place = number++;
        if (!channel)
            continue;
        std::printf("--------------[%d]-----------------\n", place);
        print_channel(*channel);
    }
}

void print_zeb5_chan_descr(std::vector<chan_descr_2010 *> *list) {
    print_zeb5_chan_descr(static_cast<const std::vector<chan_descr_2010 *> *>(list));
}
