#ifndef ZEB5_BENCH_CHANNEL_BUILDER_H
#define ZEB5_BENCH_CHANNEL_BUILDER_H

/// What the readers on other XML libraries have in common: from elements and their texts it makes the same
/// records as this library. It takes one look-up for each element and allocates only the records.

#include <memory>
#include <string_view>
#include <unordered_map>

#include "documents.h"

namespace bench {

class channel_builder {
public:
    /// What an element means; either action may be null.
    struct element {
        std::string_view name;
        void (*start)(channel_builder &, const char *attribute);
        void (*text)(channel_builder &, std::string_view text);
        bool takes_attribute = false; // `start` wants the value of the first attribute
    };

    channel_builder(channel_list &list, dialect form) : list_(list), form_(form) {}

    /// Returns null when the element is ignored.
    const element *find(std::string_view name) const;

    void start(const element &what, const char *attribute) {
        if (what.start)
            what.start(*this, attribute);
    }

    void text(const element &what, std::string_view text) {
        if (what.text && channel_)
            what.text(*this, text);
    }

private:
    friend struct channel_elements;

    channel_list &list_;
    dialect form_;
    std::unique_ptr<chan_descr_2010> unlisted_;
    chan_descr_2010 *channel_ = nullptr;
    bit_descr *bit_ = nullptr;
    dim_descr *dim_ = nullptr;
    stat_descr *stat_ = nullptr;
    std::unordered_map<std::string_view, chan_descr_2010 *>
        by_prop_; // DAQvariables merge repeated properties
};

} // namespace bench

#endif
