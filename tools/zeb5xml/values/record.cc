#include "values/record.h"

#include <algorithm>

size_t record_type::place_of(const std::string &field) const {
    const auto found =
        std::find_if(rows.begin(), rows.end(), [&](const field_row &row) { return field == row.name; });
    return static_cast<size_t>(found - rows.begin());
}

record record_from(const void *from, const record_type &type) {
    record fields;
    fields.fields.reserve(type.rows.size());
    for (const field_row &row : type.rows)
        fields.fields.push_back(row.get(from));
    return fields;
}

void *struct_from(const record &fields, const record_type &type) {
    void *made = type.make();
    for (size_t i = 0; i < type.rows.size(); ++i)
        type.rows[i].set(made, fields.fields[i]);
    return made;
}
