#include "camera_check.h"

#include <algorithm>
#include <string>
#include <unordered_map>

#include "element_text.h"
#include "nearest.h"

namespace {

constexpr std::size_t none = outline_element::none;

bool is_detail(std::string_view name) {
    return std::find(std::begin(MoreTags), std::end(MoreTags), name) != std::end(MoreTags);
}

std::vector<const char *> known_elements() {
    std::vector<const char *> names(std::begin(FeatureTags), std::end(FeatureTags));
    names.insert(names.end(), std::begin(MoreTags), std::end(MoreTags));
    return names;
}

/// A text of a feature: where it should come from, and where the reader keeps it.
struct detail {
    more_tags tag;
    std::string ZEB5GigEFeature::*field;
};
constexpr detail details[] = {{MORE_TAGS_PVRENAME, &ZEB5GigEFeature::extension},
                              {MORE_TAGS_TOOLTIP, &ZEB5GigEFeature::tooltip},
                              {MORE_TAGS_DESCRIPTION, &ZEB5GigEFeature::description}};

class camera_check {
public:
    camera_check(const outline &content, const std::vector<ZEB5GigEFeature *> &features)
        : content_(content), features_(features) {}

    std::vector<finding> run() {
        std::vector<std::size_t> places; // of the elements of features
        for (std::size_t i = 0; i < content_.elements.size(); ++i) {
            const std::string_view name = content_.elements[i].name;
            if (is_feature_element(name))
                places.push_back(i);
            else if (!is_detail(name))
                check_spelling(i);
        }
        for (std::size_t i = 0; i < places.size() && places.size() == features_.size(); ++i) {
            const std::size_t end = i + 1 < places.size() ? places[i + 1] : content_.elements.size();
            check_feature(places[i], end, *features_[i]);
        }
        return std::move(found_);
    }

private:
    void check_spelling(std::size_t element);
    void check_feature(std::size_t element, std::size_t end, const ZEB5GigEFeature &feature);
    void check_detail(std::size_t element, std::size_t end, const ZEB5GigEFeature &feature,
                      const detail &one);
    std::string name_of(std::size_t element) const;

    void tell(rule id, std::size_t element, const std::string &message, std::size_t first = finding::none) {
        found_.push_back({content_.elements[element].at, id, message, first});
    }

    const outline &content_;
    const std::vector<ZEB5GigEFeature *> &features_;
    std::unordered_map<std::string_view, const char *> meant_; // by name of an element; null: nothing
    std::unordered_map<std::string, std::size_t> first_of_;    // by name: where the feature stands
    std::vector<finding> found_;
};

/// A camera file has many elements that no reader knows, so only a slip of one letter is told.
void camera_check::check_spelling(std::size_t element) {
    constexpr std::size_t longest = 16;
    const std::string_view name = content_.elements[element].name;
    const auto [place, is_new] = meant_.emplace(name, nullptr);
    const auto is_near = [name](std::string_view known) {
        return name.size() <= longest && changes_between(name, known) <= 1;
    };
    if (is_new)
        for (const char *known : known_elements())
            if (!place->second && is_near(known))
                place->second = known;
    if (place->second)
        tell(rule::UNKNOWN_ELEMENT, element,
             "no reader knows " + in_tag(name) + "; did you mean " + in_tag(place->second) + "?");
}

/// The attribute Name of an element.
std::string camera_check::name_of(std::size_t number) const {
    const outline_element &element = content_.elements[number];
    for (std::size_t i = 0; i < element.attributes; ++i) {
        const outline_attribute &attribute = content_.attributes[element.first_attribute + i];
        if (attribute.name == Attributes[ATTRIBUTE_NAME])
            return attribute_value(attribute.value);
    }
    return "";
}

void camera_check::check_feature(std::size_t element, std::size_t end, const ZEB5GigEFeature &feature) {
    const std::string name = name_of(element), tag = in_tag(content_.elements[element].name);
    if (name.empty())
        tell(rule::MISSING_IDENTITY, element,
             tag + " has no Name: " +
                 (feature.name.empty()
                      ? "the feature has none, and listings leave it out"
                      : "it gets " + in_quotes(feature.name) + " from the next element with one"));
    else if (const auto [place, is_new] = first_of_.emplace(name, content_.elements[element].at); !is_new)
        tell(rule::DUPLICATE_IDENTITY, element,
             "another feature is named " + in_quotes(name) + ": both are kept", place->second);
    for (const detail &one : details)
        check_detail(element, end, feature, one);
}

void camera_check::check_detail(std::size_t element, std::size_t end, const ZEB5GigEFeature &feature,
                                const detail &one) {
    const std::string &kept = feature.*one.field;
    std::size_t own = none, last = none; // the feature's own element; the last one before the next feature
    for (std::size_t i = element + 1; i < end; ++i)
        if (content_.elements[i].name == MoreTags[one.tag]) {
            if (own == none && content_.elements[i].parent == element)
                own = i;
            last = i;
        }
    element_text text;
    if (own != none)
        text = text_of(content_, content_.elements[own]);
    const std::string name = own == none ? "" : name_of(own);
    if (kept == text.whole || (one.tag == MORE_TAGS_PVRENAME && !name.empty() && kept == name))
        return;
    const std::string who = "feature " + in_quotes(feature.name) + ": ", tag = in_tag(MoreTags[one.tag]);
    const bool is_part = !kept.empty() && text.whole.find(kept) != std::string::npos;
    if (text.has_entity)
        return;
    if (text.is_split() && (is_part || kept.empty()))
        return tell(rule::LOST_TEXT, own, who + what_is_kept(MoreTags[one.tag], text, kept));
    if (last == own && kept.empty())
        return; // its own element is the last one of the file, and empty
    tell(rule::FOREIGN_TEXT, last == none ? element : last,
         who + (last == own ? "the empty " + tag + " takes the next text of the file, " + in_quotes(kept)
                            : tag + " of another element gives it " + in_quotes(kept)));
}

} // namespace

bool is_feature_element(std::string_view name) {
    return std::find(std::begin(FeatureTags), std::end(FeatureTags), name) != std::end(FeatureTags);
}

std::vector<finding> faults_of_camera(const outline &content,
                                      const std::vector<ZEB5GigEFeature *> &features) {
    return camera_check(content, features).run();
}
