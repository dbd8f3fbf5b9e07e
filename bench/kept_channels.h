#ifndef ZEB5_BENCH_KEPT_CHANNELS_H
#define ZEB5_BENCH_KEPT_CHANNELS_H

/// Makes the same records from data that was kept: no reader of channels can be faster. Numbers, lengths and
/// texts stand one after the other, in about as many bytes as a document has. No element name is looked up,
/// no number is parsed, and no end of a text is searched.

#include <cstdint>
#include <string>
#include <vector>

#include "documents.h"

namespace bench {

class kept_channels {
public:
    explicit kept_channels(const channel_list &list);

    /// Makes all records anew, each as a reader must make it, and appends them to `list`.
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
