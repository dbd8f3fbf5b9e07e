#ifndef ZEB5_BENCH_KEPT_CHANNELS_H
#define ZEB5_BENCH_KEPT_CHANNELS_H

/// The same records alone, the floor of every reader of channels: records are made from what is known of them
/// already. Numbers, lengths and texts lie one behind the other, about as many bytes as a document has, and
/// no name of an element has to be found, no number to be read, no end of a text to be looked for.

#include <cstdint>
#include <string>
#include <vector>

#include "documents.h"

namespace bench {

class kept_channels {
public:
    explicit kept_channels(const channel_list &list);

    /// Makes all records anew, each as a reader has to make it, and appends them to `list`.
    void make(channel_list &list) const;

private:
    class keeping;
    class making;

    std::size_t channels_;
    std::vector<std::int32_t> numbers_; // of the records, and how many parts each has
    std::vector<std::uint8_t> lengths_; // of the texts
    std::string texts_;
};

} // namespace bench

#endif
