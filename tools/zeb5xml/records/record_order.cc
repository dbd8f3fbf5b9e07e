#include "records/record_order.h"

#include <map>

#include "values/json_text.h"

record_key key_of(const value &identity) {
    if (const auto *number = std::get_if<std::int64_t>(&identity.content))
        return {*number, ""};
    return {0, identity.text()};
}

std::string content_of(record fields, const record_type &type) {
    sort_parts(fields, type);
    return json_text(fields, type);
}

std::string content_digest(record fields, const record_type &type) {
    constexpr size_t kept = 500;
    std::string content = content_of(std::move(fields), type);
    if (content.size() <= kept)
        return content;
    std::uint64_t hash = 0xcbf29ce484222325; // FNV-1a, the same on every machine
    for (const char c : content)
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3;
    content.resize(kept);
    content.shrink_to_fit();
    return content + std::to_string(hash);
}

keyed_places::iterator end_of_group(keyed_places::iterator begin, keyed_places::iterator end) {
    return std::find_if(begin, end, [&](const keyed_place &one) { return one.identity != begin->identity; });
}

std::vector<size_t> numbers_by_identity(const record_list &list) {
    std::map<record_key, size_t> seen;
    std::vector<size_t> numbers;
    for (size_t i = 0; i < list.size(); ++i)
        numbers.push_back(++seen[key_of(list.identity_at(i))]);
    return numbers;
}

void sort_parts(record &fields, const record_type &type) {
    for (size_t i = 0; i < type.rows.size(); ++i) {
        if (type.rows[i].kind != PARTS)
            continue;
        auto &parts = std::get<std::vector<record>>(fields.fields[i].content);
        const record_type &part = *type.rows[i].part;
        std::vector<record> in_order;
        for (const keyed_place &one : sorted_places(part_list{parts, part})) {
            sort_parts(parts[one.place], part);
            in_order.push_back(std::move(parts[one.place]));
        }
        parts = std::move(in_order);
    }
}
