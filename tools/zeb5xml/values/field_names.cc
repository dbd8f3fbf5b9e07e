#include "values/field_names.h"

#include "values/type_names.h"
#include "zeb5_gige_descr.h"

bool is_mask(const field_row &row) { return row.kind == EVENT_MASK || row.kind == BLOCK_MASK; }

bool has_names(const field_row &row) {
    return is_mask(row) || row.kind == EVENT_TYPE || row.kind == FEATURE_TYPE;
}

std::string name_of_names(const field_row &row) {
    return std::string(row.name) + (is_mask(row) ? "_names" : "_name");
}

texts names_of(const field_row &row, const value &number) {
    const auto mask = static_cast<std::uint32_t>(number.number());
    switch (row.kind) {
    case EVENT_MASK:
        return event_names(mask);
    case BLOCK_MASK:
        return block_names(mask);
    case EVENT_TYPE:
        return {event_name(static_cast<int>(mask))};
    case FEATURE_TYPE:
        return {mask < FEATURE_TYPE_MAX ? FeatureTags[mask] : std::to_string(number.number())};
    default:
        return {};
    }
}
