#include "check/camera_check.h"

#include <algorithm>
#include <cctype>
#include <string>
#include <unordered_map>

#include "check/element_text.h"
#include "words/nearest.h"

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

bool is_all_cdata(const outline &content, const outline_element &element) {
    for (std::size_t i = 0; i < element.pieces; ++i) {
        const text_piece::kind what = content.pieces[element.first_piece + i].what;
        if (what == text_piece::TEXT || what == text_piece::REFERENCE)
            return false;
    }
    return element.pieces > 0;
}

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
    void check_blanks(std::size_t element, const std::string &who, const std::string &what,
                      const std::string &value);
    std::vector<std::size_t> elements_of(const detail &one, std::size_t feature, std::size_t end) const;
    void check_detail(std::size_t element, const std::vector<std::size_t> &all, const std::string &who,
                      const ZEB5GigEFeature &feature, const detail &one);
    void tell_other_text(std::size_t own, std::size_t last, const std::string &who, const detail &one,
                         const element_text &text, const std::string &kept);
    void tell_missing_name(std::size_t element, std::string taken);
    std::string name_of(std::size_t element) const;
    std::string misspelt_name_of(std::size_t element) const;

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

/// The attribute that is probably meant for the Name; empty when there is none.
std::string camera_check::misspelt_name_of(std::size_t number) const {
    const outline_element &element = content_.elements[number];
    for (std::size_t i = 0; i < element.attributes; ++i) {
        const std::string_view name = content_.attributes[element.first_attribute + i].name;
        if (name != Attributes[ATTRIBUTE_NAME] && name.size() < 8 &&
            changes_between(name, Attributes[ATTRIBUTE_NAME]) <= 1)
            return std::string(name);
    }
    return "";
}

/// `taken` says what the feature gets for a name.
void camera_check::tell_missing_name(std::size_t element, std::string taken) {
    const std::string fault = in_tag(content_.elements[element].name) + " has no Name";
    const std::string misspelt = misspelt_name_of(element);
    if (misspelt.empty())
        return tell(rule::MISSING_IDENTITY, element, fault + ": " + taken);
    taken[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(taken[0])));
    tell(rule::MISSING_IDENTITY, element,
         fault + "; did you mean it by " + in_quotes(misspelt) + "? " + taken);
}

void camera_check::check_feature(std::size_t element, std::size_t end, const ZEB5GigEFeature &feature) {
    const std::string name = name_of(element), tag = in_tag(content_.elements[element].name);
    const std::string taken = feature.name.empty()
                                  ? "the feature has none, and listings leave it out"
                                  : "it gets " + in_quotes(feature.name) + " from the next element with one";
    if (name.empty())
        tell_missing_name(element, taken);
    else if (name != feature.name)
        tell(rule::LOST_TEXT, element,
             "the Name " + in_quotes(name) + " of " + tag + " counts as none: " + taken);
    else if (const auto [place, is_new] = first_of_.emplace(name, content_.elements[element].at); !is_new)
        tell(rule::DUPLICATE_IDENTITY, element,
             "another feature is named " + in_quotes(name) + ": both are kept", place->second);
    const std::string who = feature.name.empty() ? "" : "feature " + in_quotes(feature.name) + ": ";
    if (name == feature.name)
        check_blanks(element, who, "Name of " + tag, name);
    for (const detail &one : details)
        check_detail(element, elements_of(one, element, end), who, feature, one);
}

/// A value that is kept as it is written.
void camera_check::check_blanks(std::size_t element, const std::string &who, const std::string &what,
                                const std::string &value) {
    if (is_padded(value))
        tell(rule::PADDED_VALUE, element,
             who + "the white space around the " + what + " is kept: " + in_quotes(value));
}

/// The elements of this kind up to the next feature.
std::vector<std::size_t> camera_check::elements_of(const detail &one, std::size_t feature,
                                                   std::size_t end) const {
    std::vector<std::size_t> found;
    for (std::size_t i = feature + 1; i < end; ++i)
        if (content_.elements[i].name == MoreTags[one.tag])
            found.push_back(i);
    return found;
}

void camera_check::check_detail(std::size_t element, const std::vector<std::size_t> &all,
                                const std::string &who, const ZEB5GigEFeature &feature, const detail &one) {
    const std::string tag = in_tag(MoreTags[one.tag]);
    std::size_t own = none, first = none; // the feature's own element, of several the last one
    for (const std::size_t i : all) {
        if (content_.elements[i].parent != element)
            continue;
        if (own != none)
            tell(rule::REPEATED_ELEMENT, i, who + tag + " replaces what was read before",
                 content_.elements[first].at);
        if (first == none)
            first = i;
        own = i;
    }
    if (own != none && content_.elements[own].later_text != none)
        found_.push_back({content_.elements[own].later_text, rule::IGNORED_TEXT,
                          who + "text of " + tag + " that follows another element is not read"});
    const std::string &kept = feature.*one.field;
    const element_text text = own == none ? element_text() : text_of(content_, content_.elements[own]);
    const std::string name = one.tag == MORE_TAGS_PVRENAME && own != none ? name_of(own) : "";
    if (kept == (name.empty() ? text.whole : name)) {
        if (own != none)
            check_blanks(own, who, (name.empty() ? "text of " : "Name of ") + tag, kept);
    } else if (!name.empty() && kept.empty())
        tell(rule::LOST_TEXT, own, who + "the Name " + in_quotes(name) + " of " + tag + " gets lost");
    else if (!text.has_entity)
        tell_other_text(own, all.empty() ? element : all.back(), who, one, text, kept);
}

/// The feature does not keep the text of its own element, or keeps one without having such an element.
void camera_check::tell_other_text(std::size_t own, std::size_t last, const std::string &who,
                                   const detail &one, const element_text &text, const std::string &kept) {
    const std::string tag = in_tag(MoreTags[one.tag]);
    const std::string next =
        one.tag == MORE_TAGS_PVRENAME ? "the next text or Name of the file, " : "the next text of the file, ";
    const std::string instead = kept.empty() ? "nothing" : next + in_quotes(kept);
    if (last != own)
        return tell(rule::FOREIGN_TEXT, last,
                    who + tag + " of another element " +
                        (kept.empty() ? "takes its text away" : "gives it " + in_quotes(kept)));
    if (text.whole.empty())
        return tell(rule::FOREIGN_TEXT, own, who + "the empty " + tag + " takes " + instead);
    if (is_all_cdata(content_, content_.elements[own]))
        return tell(rule::LOST_TEXT, own,
                    who + "the text of " + tag +
                        " is in a CDATA section, which the reader of camera files ignores: it keeps " +
                        instead);
    if (text.is_split() && text.whole.find(kept) != std::string::npos)
        return tell(rule::LOST_TEXT, own, who + what_is_kept(MoreTags[one.tag], text, kept));
    tell(rule::LOST_TEXT, own,
         who + "the text " + in_quotes(text.whole) + " of " + tag + " gets lost: the reader keeps " +
             instead);
}

} // namespace

bool is_feature_element(std::string_view name) {
    return std::find(std::begin(FeatureTags), std::end(FeatureTags), name) != std::end(FeatureTags);
}

std::vector<finding> faults_of_camera(const outline &content,
                                      const std::vector<ZEB5GigEFeature *> &features) {
    return camera_check(content, features).run();
}
