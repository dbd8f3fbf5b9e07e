#include "losses/lost_fields.h"

#include <set>

namespace {

record_key identity_of(const record &part) { return key_of(part.fields.front()); }

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

merged_record::merged_record(record merged, const record_type &type)
    : merged_(std::move(merged)), type_(type), places_(type.rows.size()) {
    for (size_t i = 0; i < type.rows.size(); ++i)
        if (type.rows[i].kind == PARTS)
            for (size_t place = 0; place < merged_.fields[i].parts().size(); ++place)
                places_[i][identity_of(merged_.fields[i].parts()[place])].push_back(place);
}

/// The merged record without the parts whose identity no part of the loser has: nothing is lost in them.
record merged_record::beside(const record &loser) const {
    record kept;
    for (size_t i = 0; i < type_.rows.size(); ++i) {
        if (type_.rows[i].kind != PARTS) {
            kept.fields.push_back(merged_.fields[i]);
            continue;
        }
        std::set<record_key> identities;
        for (const record &part : loser.fields[i].parts())
            identities.insert(identity_of(part));
        std::vector<record> parts;
        for (const record_key &identity : identities)
            if (const auto found = places_[i].find(identity); found != places_[i].end())
                for (const size_t place : found->second)
                    parts.push_back(merged_.fields[i].parts()[place]);
        kept.fields.push_back({std::move(parts)});
    }
    return kept;
}

std::vector<difference> merged_record::lost_fields(const record &loser) const {
    std::vector<difference> lost;
    const record fresh = type_.fresh(type_);
    for (difference &one : differences(loser, beside(loser), type_)) {
        const size_t place = type_.place_of(one.path);
        const bool is_default = place < fresh.fields.size() && one.was == fresh.fields[place];
        if (is_set(one.was) && !is_default)
            lost.push_back(std::move(one));
    }
    return lost;
}
