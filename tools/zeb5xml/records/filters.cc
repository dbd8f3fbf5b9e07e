#include "records/filters.h"

#include <charconv>
#include <cstring>
#include <fnmatch.h>
#include <optional>

#include "files/failure.h"
#include "values/type_names.h"

namespace {

std::optional<std::int64_t> number_from(const std::string &text) {
    std::int64_t number = 0;
    const char *end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && rest == end ? std::optional(number) : std::nullopt;
}

bool is_match(const value &one, const field_row &row, const std::string &wanted) {
    switch (row.kind) {
    case TEXT:
        return fnmatch(wanted.c_str(), one.text().c_str(), 0) == 0;
    case EVENT_MASK:
        return one.number() >> event_type_of(wanted) & 1;
    case EVENT_TYPE:
        return one.number() == event_type_of(wanted);
    default:
        return one.number() == number_from(wanted);
    }
}

/// An option that was given, with the places of the rows that it looks at: one of them must match.
struct filter {
    const char *option;
    const std::string &wanted;
    std::vector<size_t> places;
};

filter filter_for(const char *option, const std::string &wanted, const record_type &type) {
    filter made{option, wanted, {}};
    for (size_t i = 0; i < type.rows.size(); ++i)
        if (type.rows[i].filter && strcmp(type.rows[i].filter, option) == 0)
            made.places.push_back(i);
    return made;
}

bool passes(const filter &one, const record &fields, const record_type &type) {
    for (const size_t place : one.places)
        if (is_match(fields.fields[place], type.rows[place], one.wanted))
            return true;
    return false;
}

} // namespace

std::vector<argument> record_filters::arguments() {
    return {{"--channel", &channel,
             "Only channels, dictionary entries or camera features whose property or name matches this shell "
             "pattern, such as 'A/*' or '*.X'"},
            {"--event",
             &event,
             "Only channels or events of this event type, by name (ENV) or number (4)",
             argument::OPTIONAL,
             {},
             event_type_fault},
            {"--stream",
             &stream,
             "Only channels of this data stream",
             argument::OPTIONAL,
             {},
             [](const std::string &text) { return number_from(text) ? "" : "no number: " + text; }},
            {"--subsystem", &subsystem, "Only channels whose subsystem matches this shell pattern"}};
}

void record_filters::apply(record_list &list, const record_kind &kind, const std::string &name) const {
    std::vector<filter> given;
    const std::pair<const char *, const std::string &> options[] = {
        {"--channel", channel}, {"--event", event}, {"--stream", stream}, {"--subsystem", subsystem}};
    for (const auto &[option, wanted] : options) {
        if (wanted.empty())
            continue;
        given.push_back(filter_for(option, wanted, list.type()));
        if (given.back().places.empty())
            throw failure(STATUS_DOCUMENT, name + ": " + option + " is not for " + kind.with_article);
    }
    if (!given.empty())
        list.keep([&](const record &fields) {
            for (const filter &one : given)
                if (!passes(one, fields, list.type()))
                    return false;
            return true;
        });
}
