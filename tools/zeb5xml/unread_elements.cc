#include "unread_elements.h"

#include <algorithm>
#include <map>
#include <string_view>

#include "decoded_text.h"
#include "element_text.h"
#include "elements/chan_descriptions_elements.h"
#include "elements/daq_variables_elements.h"
#include "text_places.h"

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

/// How often an element of one name stands in the document, and the first of them.
struct occurrences {
    size_t count = 0;
    size_t at = 0;
    std::string text;
};

/// Names of the elements that no reader takes; the value is to be filled in.
std::map<std::string_view, occurrences> unread_names(std::string_view root) {
    std::map<std::string_view, occurrences> names;
    for (const zeb5::document_elements *kind :
         {&zeb5::chan_descriptions_elements, &zeb5::daq_variables_elements})
        for (const zeb5::element_row &row : kind->rows)
            if (root == kind->root && row.value == zeb5::value_kind::UNREAD && row.level != zeb5::root_level)
                names[row.name];
    return names;
}

} // namespace

std::vector<std::string> unread_elements(const document &source) {
    const decoded_text decoded = decode(source.text());
    const outline content = outline_of(decoded.text, decoded.text.size());
    if (content.elements.empty())
        return {};
    auto names = unread_names(content.elements.front().name);
    if (names.empty())
        return {};
    for (const outline_element &element : content.elements) {
        const auto found = names.find(element.name);
        if (found == names.end())
            continue;
        const std::string text(trimmed(text_of(content, element).whole));
        if (says_something(element.name, text) && found->second.count++ == 0)
            found->second = {1, element.at, text};
    }
    std::map<size_t, std::pair<std::string_view, occurrences>> in_order; // of the document
    for (const auto &[name, all] : names)
        if (all.count != 0)
            in_order.emplace(all.at, std::pair(name, all));
    text_places places(decoded.text);
    std::vector<std::string> lines;
    for (const auto &[at, one] : in_order) {
        const auto &[name, all] = one;
        const text_place place = places.place_of(at);
        lines.push_back(source.name + ":" + std::to_string(place.line) + ":" + std::to_string(place.column) +
                        ": no reader takes " + in_tag(name) + ": " + in_quotes(all.text) + " is left out" +
                        (all.count > 1 ? ", and " + std::to_string(all.count - 1) + " more" : ""));
    }
    return lines;
}
