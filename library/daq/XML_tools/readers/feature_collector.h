#ifndef ZEB5_FEATURE_COLLECTOR_H
#define ZEB5_FEATURE_COLLECTOR_H

/// What the elements, Name attributes and texts of a camera file say about features, in the order of the
/// document.

#include <string>
#include <vector>

#include "zeb5_gige_descr.h"

namespace zeb5 {

// What an element means: a kind of feature, or behind these one of MoreTags
inline constexpr int first_more_tag = FEATURE_TYPE_MAX;
inline constexpr int no_feature_element = first_more_tag + static_cast<int>(MORE_TAGS_MAX);

/// Finds what an element name means; `is_name(known)` tells whether it is the one asked for.
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
    /// Goes on with the last feature of `out`, where there is one.
    explicit feature_collector(std::vector<ZEB5GigEFeature *> &out)
        : out_(out), current_(out.empty() ? nullptr : out.back()) {}

    /// An element begins.
    void take_element(int element);

    /// The field that the Name attribute of the element goes to; null when nobody waits for one. Kept: the
    /// Name of any element counts. That of a PvRename is the alternative name, but a feature without a Name
    /// of its own is seen under the next one in the file.
    std::string *field_for_name();

    /// The field that a text goes to; null when nobody waits for one. Kept: text goes where text is awaited,
    /// wherever it stands. After an empty ToolTip the white space behind it is seen as the tool tip.
    std::string *field_for_text();

private:
    void begin(int type);

    std::vector<ZEB5GigEFeature *> &out_;
    ZEB5GigEFeature *current_; // the last of `out_`
    bool may_wait_ = true;     // whether a field of it waits, as far as is known: most texts are for nobody
};

/// Empties what nothing was found for, once the whole file was read.
void clear_markers(const std::vector<ZEB5GigEFeature *> &features);

} // namespace zeb5

#endif
