#include "losses/unread_elements.h"

#include <algorithm>
#include <set>
#include <string_view>

#include "check/decoded_text.h"
#include "check/element_text.h"
#include "elements/chan_descriptions_elements.h"
#include "elements/daq_variables_elements.h"
#include "words/text_places.h"

namespace {

/// What writers put there for want of a value.
constexpr std::pair<std::string_view, std::string_view> fillers[] = {{zeb5::daq_tags::db_key, "-1"},
                                                                     {zeb5::daq_tags::first_index, "0"},
                                                                     {zeb5::daq_tags::freq, "1"},
                                                                     {zeb5::daq_tags::freq, "-1"}};

bool says_something(std::string_view name, std::string_view text) {
    return !text.empty() &&
           std::find(std::begin(fillers), std::end(fillers), std::pair(name, text)) == std::end(fillers);
}

/// The elements of one name.
struct occurrences {
    std::string_view name;
    size_t at; // of the first
    std::string text;
    size_t count = 1;
};

/// Names of the elements that no reader takes.
std::set<std::string_view> unread_names(std::string_view root) {
    std::set<std::string_view> names;
    for (const zeb5::document_elements *kind :
         {&zeb5::chan_descriptions_elements, &zeb5::daq_variables_elements})
        for (const zeb5::element_row &row : kind->rows)
            if (root == kind->root && row.value == zeb5::value_kind::UNREAD && row.level != zeb5::root_level)
                names.insert(row.name);
    return names;
}

/// In the order of the first of each name.
std::vector<occurrences> found_in(const outline &content) {
    std::vector<occurrences> found;
    const auto names = unread_names(content.elements.front().name);
    for (const outline_element &element : content.elements) {
        if (names.count(element.name) == 0)
            continue;
        const std::string text(trimmed(text_of(content, element).whole));
        if (!says_something(element.name, text))
            continue;
        const auto known = std::find_if(found.begin(), found.end(),
                                        [&](const occurrences &one) { return one.name == element.name; });
        if (known == found.end())
            found.push_back({element.name, element.at, text});
        else
            ++known->count;
    }
    return found;
}

} // namespace

std::vector<std::string> unread_elements(const document &source) {
    const decoded_text decoded = decode(source.text());
    const outline content = outline_of(decoded.text, decoded.text.size());
    if (content.elements.empty())
        return {};
    std::vector<std::string> lines;
    text_places places(decoded.text);
    for (const occurrences &all : found_in(content)) {
        const text_place place = places.place_of(all.at);
        lines.push_back(source.name + ":" + std::to_string(place.line) + ":" + std::to_string(place.column) +
                        ": no reader takes " + in_tag(all.name) + ": " + in_quotes(all.text) +
                        " is left out" +
                        (all.count > 1 ? ", and " + std::to_string(all.count - 1) + " more" : ""));
    }
    return lines;
}
