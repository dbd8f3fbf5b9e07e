#ifndef ZEB5_BENCH_FEATURE_COLLECTOR_H
#define ZEB5_BENCH_FEATURE_COLLECTOR_H

/// What the camera readers on other XML libraries have in common.

#include <algorithm>
#include <memory>
#include <string_view>

#include "peers.h"

namespace bench {

class feature_collector {
public:
    explicit feature_collector(feature_list &list) : list_(list) {}

    /// One element: its name, the value of its attribute Name, its first text.
    void take(std::string_view element, const char *name, const char *text) {
        const auto *const kind = std::find(std::begin(FeatureTags), std::end(FeatureTags), element);
        if (kind != std::end(FeatureTags)) {
            list_.push_back(new ZEB5GigEFeature);
            list_.back()->type = static_cast<int>(kind - FeatureTags);
            list_.back()->name = name;
        } else if (!list_.empty() && element == MoreTags[MORE_TAGS_TOOLTIP]) {
            list_.back()->tooltip = text;
        } else if (!list_.empty() && element == MoreTags[MORE_TAGS_DESCRIPTION]) {
            list_.back()->description = text;
        }
    }

private:
    feature_list &list_;
};

} // namespace bench

#endif
