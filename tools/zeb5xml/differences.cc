#include "differences.h"

#include <algorithm>
#include <tuple>

#include "value_text.h"

namespace {

/// An identity that can be sorted, and which of the records with this identity it is, counted from 1.
struct key {
    std::int64_t number = 0;
    std::string text;
    size_t which = 0;

    explicit key(const value &identity) {
        if (const auto *content = std::get_if<std::int64_t>(&identity.content))
            number = *content;
        else
            text = identity.text();
    }
    bool operator<(const key &other) const {
        return std::tie(number, text, which) < std::tie(other.number, other.text, other.which);
    }
};

/// The keys of records, sorted; each with the place of its record.
using keyed_places = std::vector<std::pair<key, size_t>>;

keyed_places sorted(std::vector<key> keys) {
    keyed_places places;
    places.reserve(keys.size());
    for (size_t i = 0; i < keys.size(); ++i)
        places.emplace_back(std::move(keys[i]), i);
    std::sort(places.begin(), places.end());
    for (size_t i = 0; i < places.size(); ++i) {
        const bool again = i > 0 && places[i].first.number == places[i - 1].first.number &&
                           places[i].first.text == places[i - 1].first.text;
        places[i].first.which = again ? places[i - 1].first.which + 1 : 1;
    }
    return places;
}

keyed_places keys_of(const std::vector<record> &parts) {
    std::vector<key> keys;
    keys.reserve(parts.size());
    for (const record &part : parts)
        keys.emplace_back(part.fields.front());
    return sorted(std::move(keys));
}

keyed_places keys_of(const record_list &list) {
    std::vector<key> keys;
    keys.reserve(list.size());
    for (size_t i = 0; i < list.size(); ++i)
        keys.emplace_back(list.identity_at(i));
    return sorted(std::move(keys));
}

/// Walks through both; `action` gets the key, and the place in each or nothing.
template <class Action> void match(const keyed_places &before, const keyed_places &after, Action action) {
    auto left = before.begin(), right = after.begin();
    while (left != before.end() || right != after.end()) {
        const bool only_right = left == before.end() || (right != after.end() && right->first < left->first);
        const bool only_left = right == after.end() || (left != before.end() && left->first < right->first);
        const key &now = only_right ? right->first : left->first;
        std::optional<size_t> was, is;
        if (!only_right)
            was = (left++)->second;
        if (!only_left)
            is = (right++)->second;
        action(now, was, is);
    }
}

std::string number_of(const key &which) {
    return which.which > 1 ? " (" + std::to_string(which.which) + ")" : "";
}

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
        match(keys_of(before), keys_of(after),
              [&](const key &now, std::optional<size_t> was, std::optional<size_t> is) {
                  const record &part = was ? before[*was] : after[*is];
                  const value &identity = part.fields.front();
                  const std::string number = row.part->identity().kind == TEXT
                                                 ? plain_text(identity.text())
                                                 : std::to_string(identity.number());
                  const std::string here = path + "[" + number + "]" + number_of(now);
                  if (was && is)
                      return compare(part, after[*is], *row.part, here + ".", field + ".");
                  const auto alone = [](const record &one) { return value{std::vector<record>{one}}; };
                  found.push_back({here, field, &row, was ? std::optional(alone(part)) : std::nullopt,
                                   is ? std::optional(alone(part)) : std::nullopt});
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
    match(keys_of(before), keys_of(after),
          [&](const key &now, std::optional<size_t> was, std::optional<size_t> is) {
              record_pair pair;
              if (was)
                  pair.before = before.at(*was);
              if (is)
                  pair.after = after.at(*is);
              const record &one = was ? *pair.before : *pair.after;
              pair.name = identity_text(one.fields.front(), before.type().identity()) + number_of(now);
              action(pair);
          });
}

std::vector<size_t> places_by_identity(const record_list &list) {
    std::vector<size_t> places;
    for (const auto &[now, place] : keys_of(list))
        places.push_back(place);
    return places;
}

void sort_parts(record &fields, const record_type &type) {
    for (size_t i = 0; i < type.rows.size(); ++i) {
        if (type.rows[i].kind != PARTS)
            continue;
        auto &parts = std::get<std::vector<record>>(fields.fields[i].content);
        std::vector<record> in_order;
        for (const auto &[now, place] : keys_of(parts)) {
            sort_parts(parts[place], *type.rows[i].part);
            in_order.push_back(std::move(parts[place]));
        }
        parts = std::move(in_order);
    }
}
