#include "readers/feature_collector.h"

#include <memory>
#include <string_view>

namespace zeb5 {

namespace {

// Kept: the two markers are plain texts of the fields, and users of dump_nodes() see them. Where a text of
// the file itself equals a marker, it is treated as a missing text.
constexpr std::string_view unknown = "Unknown"; // not yet given
constexpr std::string_view waiting = "Waiting"; // expected from the next text or Name

/// The field that each of MoreTags sets to "Waiting". A text goes to the first field that waits, in this
/// order.
constexpr std::string ZEB5GigEFeature::*waiting_fields[MORE_TAGS_MAX] = {
    nullptr, // Kept: readers of the records see no trace of an Extension
    &ZEB5GigEFeature::extension,
    &ZEB5GigEFeature::tooltip,
    &ZEB5GigEFeature::description,
};

} // namespace

void feature_collector::take_element(int element) {
    if (element < first_more_tag)
        begin(element);
    else if (element != no_feature_element && current_)
        if (const auto field = waiting_fields[element - first_more_tag]) {
            current_->*field = waiting;
            may_wait_ = true;
        }
}

void feature_collector::begin(int type) {
    auto feature = std::make_unique<ZEB5GigEFeature>();
    feature->type = type;
    feature->name = feature->extension = feature->tooltip = feature->description = unknown;
    out_.push_back(feature.get());
    current_ = feature.release();
}

std::string *feature_collector::field_for_name() {
    if (!current_)
        return nullptr;
    if (current_->name == unknown)
        return &current_->name;
    return current_->extension == waiting ? &current_->extension : nullptr;
}

std::string *feature_collector::field_for_text() {
    if (!current_ || !may_wait_)
        return nullptr;
    for (const auto field : waiting_fields)
        if (field && current_->*field == waiting)
            return &(current_->*field);
    may_wait_ = false;
    return nullptr;
}

void clear_markers(const std::vector<ZEB5GigEFeature *> &features) {
    for (ZEB5GigEFeature *feature : features)
        for (std::string *field :
             {&feature->name, &feature->extension, &feature->tooltip, &feature->description})
            if (*field == unknown || *field == waiting)
                field->clear();
}

} // namespace zeb5
