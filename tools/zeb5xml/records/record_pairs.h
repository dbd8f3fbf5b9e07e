#ifndef ZEB5XML_RECORD_PAIRS_H
#define ZEB5XML_RECORD_PAIRS_H

/// Which records of two lists are the same one: those of one identity, and of several with one identity,
/// those that are most alike. The order of the records does not matter.

#include <optional>
#include <span>
#include <tuple>
#include <vector>

#include "records/record_order.h"

/// The places of a record before and after; at least one of them is there.
struct place_pair {
    std::optional<size_t> was, is;
};

/// Pairs the records of one identity.
template <class List> class group_pairs {
public:
    using group = std::span<const keyed_place>;

    group_pairs(const List &before, const List &after, group was, group is)
        : before_(before), after_(after), was_(was), is_(is), partner_(was.size()), is_paired_(is.size()) {
        pair_equal();
        pair_alike();
    }

    /// The pairs in the order of the first group. Records that the second one has alone come behind.
    std::vector<place_pair> all() const {
        std::vector<place_pair> pairs;
        for (size_t i = 0; i < was_.size(); ++i)
            pairs.push_back(
                {was_[i].place, partner_[i] ? std::optional(is_[*partner_[i]].place) : std::nullopt});
        for (size_t i = 0; i < is_.size(); ++i)
            if (!is_paired_[i])
                pairs.push_back({std::nullopt, is_[i].place});
        return pairs;
    }

private:
    void join(size_t was, size_t is) {
        partner_[was] = is;
        is_paired_[is] = true;
    }

    /// Contents are empty only where both groups have one record.
    void pair_equal() {
        for (size_t i = 0, j = 0; i < was_.size() && j < is_.size();) {
            const int order = was_[i].content.compare(is_[j].content);
            if (order == 0)
                join(i, j);
            i += order <= 0;
            j += order >= 0;
        }
    }

    /// Pairs what is left: those with the fewest fields that differ first. Very many are paired in their
    /// order.
    void pair_alike() {
        constexpr size_t most_comparisons = 1000;
        std::vector<size_t> left, right;
        for (size_t i = 0; i < was_.size(); ++i)
            if (!partner_[i])
                left.push_back(i);
        for (size_t i = 0; i < is_.size(); ++i)
            if (!is_paired_[i])
                right.push_back(i);
        if (left.size() * right.size() > most_comparisons) {
            for (size_t i = 0; i < std::min(left.size(), right.size()); ++i)
                join(left[i], right[i]);
            return;
        }
        const std::vector<record> lefts = sorted_records(before_, was_, left),
                                  rights = sorted_records(after_, is_, right);
        std::vector<std::tuple<size_t, size_t, size_t>> candidates; // fields that differ, and the two
        for (size_t i = 0; i < left.size(); ++i)
            for (size_t j = 0; j < right.size(); ++j)
                candidates.emplace_back(fields_that_differ(lefts[i], rights[j]), left[i], right[j]);
        std::sort(candidates.begin(), candidates.end());
        for (const auto &[number, i, j] : candidates)
            if (!partner_[i] && !is_paired_[j])
                join(i, j);
    }

    static std::vector<record> sorted_records(const List &list, group all,
                                              const std::vector<size_t> &wanted) {
        std::vector<record> records;
        for (const size_t i : wanted) {
            records.push_back(list.at(all[i].place));
            sort_parts(records.back(), list.type());
        }
        return records;
    }

    static size_t fields_that_differ(const record &a, const record &b) {
        size_t count = 0;
        for (size_t i = 0; i < a.fields.size(); ++i)
            count += !(a.fields[i] == b.fields[i]);
        return count;
    }

    const List &before_;
    const List &after_;
    const group was_, is_;
    std::vector<std::optional<size_t>> partner_; // of each in the first group
    std::vector<bool> is_paired_;                // each in the second group
};

/// Walks through two lists of one type, sorted by identity. `action` gets each pair, and which of its
/// identity it is, counted from 1.
template <class List, class Action> void match(const List &before, const List &after, Action action) {
    keyed_places was = sorted_places(before), is = sorted_places(after);
    auto left = was.begin(), right = is.begin();
    while (left != was.end() || right != is.end()) {
        const bool only_right = left == was.end() || (right != is.end() && right->identity < left->identity);
        const bool only_left = right == is.end() || (left != was.end() && left->identity < right->identity);
        const auto left_end = only_right ? left : end_of_group(left, was.end());
        const auto right_end = only_left ? right : end_of_group(right, is.end());
        if (left_end - left == 1 && right_end - right > 1)
            left->content = content_digest(before.at(left->place), before.type());
        if (right_end - right == 1 && left_end - left > 1)
            right->content = content_digest(after.at(right->place), after.type());
        size_t which = 0;
        for (const place_pair &pair :
             group_pairs<List>(before, after, {left, left_end}, {right, right_end}).all())
            action(pair, ++which);
        left = left_end;
        right = right_end;
    }
}

#endif
