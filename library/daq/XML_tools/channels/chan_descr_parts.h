#ifndef ZEB5_CHAN_DESCR_PARTS_H
#define ZEB5_CHAN_DESCR_PARTS_H

/// What reader, writer and merging share about the records: the data-type word, and how bits, dimensions and
/// statistics are added to their records and released.

#include <memory>

#include "parse_chan_descr.h"

namespace zeb5 {

/// With this bit set in a data-type word, bit k means block type k + 32.
inline constexpr std::uint32_t blocks_2010 = 0x80000000;

/// Releases a part with all that it holds, whatever its counts say.
struct part_release {
    void operator()(const bit_descr *bit) const { delete bit; }
    void operator()(const stat_descr *stat) const { delete stat; }
    void operator()(const dim_descr *dim) const {
        if (dim)
            for (const stat_descr *stat : dim->stats)
                delete stat;
        delete dim;
    }
    void operator()(const chan_descr_2010 *channel) const {
        for (const bit_descr *bit : channel->bits)
            delete bit;
        for (const dim_descr *dim : channel->dims)
            (*this)(dim);
        delete channel;
    }
};

template <class Record> using owned = std::unique_ptr<Record, part_release>;

/// Moves a sub-record into its record and counts it; does nothing for null.
template <class Record>
Record *append_part(std::vector<Record *> &parts, std::int32_t &count, owned<Record> part) {
    if (!part)
        return nullptr;
    parts.push_back(part.get());
    ++count;
    return part.release();
}

/// Calls `action` for each part of a record. Null parts, which lists made by hand may have, are skipped.
template <class Part, class Action> void for_each_part(const std::vector<Part *> &parts, Action action) {
    for (const Part *part : parts)
        if (part)
            action(*part);
}

/// Releases a dimension of the channel `prop`, and its statistics if its count of them is not 0. Does nothing
/// for null.
void release_dim(const dim_descr *dim, const char *prop);

} // namespace zeb5

#endif
