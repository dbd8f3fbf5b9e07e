#ifndef ZEB5_FEATURE_COLLECTOR_H
#define ZEB5_FEATURE_COLLECTOR_H

/// Collects features from the elements, Name attributes and texts of a camera file, in the order of the
/// document.

#include <string>
#include <vector>

#include "zeb5_gige_descr.h"

namespace zeb5 {

// What an element means: a kind of feature, or, numbered after these, one of MoreTags
inline constexpr int first_more_tag = FEATURE_TYPE_MAX;
inline constexpr int no_feature_element = first_more_tag + static_cast<int>(MORE_TAGS_MAX);

/// Finds what an element name means; `is_name(known)` tells whether the name is `known`.
template <class IsName> int find_feature_element(IsName is_name) {
    for (int type = 0; type < FEATURE_TYPE_MAX; ++type)
        if (is_name(FeatureTags[type]))
            return type;
    for (int more = 0; more < MORE_TAGS_MAX; ++more)
        if (is_name(MoreTags[more]))
            return first_more_tag + more;
    return no_feature_element;
}

class feature_collector {
public:
    /// Continues with the last feature of `out`, if there is one.
    explicit feature_collector(std::vector<ZEB5GigEFeature *> &out)
        : out_(out), current_(out.empty() ? nullptr : out.back()) {}

    /// An element begins.
    void take_element(int element);

    /// Returns the field that the Name attribute of the element goes to; null when no field waits for it.
    /// Kept: the Name of any element counts. That of a PvRename is the alternative name, but users see a
    /// feature without a Name of its own under the next Name in the file.
    std::string *field_for_name();

    /// Returns the field that a text goes to; null when no field waits for it. Kept: it does not matter where
    /// the text stands. After an empty ToolTip, users see the white space that follows as the tool tip.
    std::string *field_for_text();

private:
    void begin(int type);

    std::vector<ZEB5GigEFeature *> &out_;
    ZEB5GigEFeature *current_; // the last of `out_`
    bool may_wait_ = true;     // false: no field of it waits, which is so for most texts
};

/// Empties the texts that were not found, once the whole file was read.
void clear_markers(const std::vector<ZEB5GigEFeature *> &features);

} // namespace zeb5

#endif
