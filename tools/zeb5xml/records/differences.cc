#include "records/differences.h"

#include "records/record_pairs.h"
#include "values/value_text.h"

namespace {

class comparison {
public:
    void compare(const record &before, const record &after, const record_type &type, const std::string &path,
                 const std::string &field) {
        for (size_t i = 0; i < type.rows.size(); ++i) {
            const field_row &row = type.rows[i];
            const value &was = before.fields[i], &is = after.fields[i];
            if (row.kind == PARTS)
                compare_parts(was.parts(), is.parts(), row, path + row.name, field + row.name);
            else if (!(was == is))
                found.push_back({path + row.name, field + row.name, &row, was, is});
        }
    }

    std::vector<difference> found;

private:
    void compare_parts(const std::vector<record> &before, const std::vector<record> &after,
                       const field_row &row, const std::string &path, const std::string &field) {
        const part_list were{before, *row.part}, are{after, *row.part};
        match(were, are, [&](const place_pair &pair, size_t which) {
            const record &part = pair.was ? before[*pair.was] : after[*pair.is];
            const value &identity = part.fields.front();
            const std::string number = row.part->identity().kind == TEXT ? plain_text(identity.text())
                                                                         : std::to_string(identity.number());
            const std::string here = path + "[" + number + "]" + which_text(which);
            if (pair.was && pair.is)
                return compare(part, after[*pair.is], *row.part, here + ".", field + ".");
            const auto alone = [](const record &one) { return value{std::vector<record>{one}}; };
            found.push_back({here, field, &row, pair.was ? std::optional(alone(part)) : std::nullopt,
                             pair.is ? std::optional(alone(part)) : std::nullopt});
        });
    }
};

} // namespace

std::vector<difference> differences(const record &before, const record &after, const record_type &type) {
    comparison all;
    all.compare(before, after, type, "", "");
    return std::move(all.found);
}

std::string side_text(const std::optional<value> &one, const field_row &row) {
    if (!one)
        return "nothing";
    const std::string text = value_text(*one, row);
    return row.kind == PARTS ? text.substr(1, text.size() - 2) : text; // without the brackets of the list
}

std::string difference_text(const difference &one, const std::string &becomes) {
    return one.path + ": " + side_text(one.was, *one.row) + " " + becomes + " " + side_text(one.is, *one.row);
}

void for_each_pair(const record_list &before, const record_list &after,
                   const std::function<void(const record_pair &)> &action) {
    match(before, after, [&](const place_pair &places, size_t which) {
        record_pair pair;
        pair.place = places.was;
        if (places.was)
            pair.before = before.at(*places.was);
        if (places.is)
            pair.after = after.at(*places.is);
        const record &one = places.was ? *pair.before : *pair.after;
        pair.name = identity_text(one.fields.front(), before.type().identity(), which);
        action(pair);
    });
}
