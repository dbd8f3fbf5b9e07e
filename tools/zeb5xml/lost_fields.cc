#include "lost_fields.h"

namespace {

/// Whether something stands in the field: a part, or what a new record does not have.
bool is_set(const std::optional<value> &one) {
    if (!one)
        return false;
    if (const auto *number = std::get_if<std::int64_t>(&one->content))
        return *number != 0;
    if (const auto *text = std::get_if<std::string>(&one->content))
        return !text->empty();
    return true;
}

} // namespace

std::vector<difference> lost_fields(const record &loser, const record &merged, const record_type &type) {
    std::vector<difference> lost;
    const record fresh = type.fresh(type);
    for (difference &one : differences(loser, merged, type)) {
        const size_t place = type.place_of(one.path);
        const bool is_default = place < fresh.fields.size() && one.was == fresh.fields[place];
        if (is_set(one.was) && !is_default)
            lost.push_back(std::move(one));
    }
    return lost;
}
