#ifndef ZEB5_HASHED_NAMES_H
#define ZEB5_HASHED_NAMES_H

/// Follows the hash tables of the XML library. Their hash function has no seed, so a document can choose
/// names that all stand in one list of a table, and a look-up compares the whole list.

#include <algorithm>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include <xercesc/util/XercesDefs.hpp>

#include "limits/limits.h"
#include "text/name_hash.h"

namespace zeb5 {

/// The price of comparing a name with so many others, which are at most as long as this.
constexpr price price_of_comparing(std::size_t others, std::size_t longest) {
    const price name = std::min(compared_name_price + others / 40, far_name_price);
    return others * (name + compared_character_price * longest);
}

/// How one of the parser's tables grows: when a table of L lists has L * names / lists names, it gets
/// factor * L + 1 lists.
struct table_growth {
    std::size_t first_lists;
    std::size_t names;
    std::size_t lists;
    std::size_t factor;
};
inline constexpr table_growth usual_growth = {109, 3, 4, 2};
inline constexpr table_growth growth_of_small_tables = {29, 3, 4, 2};
inline constexpr table_growth growth_of_sets = {7, 4, 1, 8};
inline constexpr table_growth no_growth = {257, 0, 0, 1};

/// The names of one table.
class hashed_names {
public:
    explicit hashed_names(const table_growth &growth = usual_growth) : growth_(growth) {}

    /// A name comes into the table, which does not have it yet.
    void add(const XMLCh *name);

    /// The price of a look-up, at most.
    price look_up() const { return price_of_comparing(longest_list_, longest_name_); }

    std::size_t longest_name() const { return longest_name_; }

private:
    void put(std::size_t hash) { longest_list_ = std::max(longest_list_, ++lists_[hash % lists_.size()]); }

    table_growth growth_;
    std::vector<std::size_t> hashes_;
    std::vector<std::size_t> lists_; // the length of each
    std::size_t longest_list_ = 0;
    std::size_t longest_name_ = 0;
};

/// The same for names that come again and again.
class hashed_repeated_names : public hashed_names {
public:
    using hashed_names::hashed_names;

    /// Returns the number of different names so far.
    std::size_t add(const XMLCh *name);

private:
    std::u16string last_;
    std::unordered_set<std::u16string, seeded_name_hash> names_;
};

/// All tables that a document fills, and other lists of names that the parser searches.
struct document_names {
    hashed_repeated_names elements; // declared, or named by declarations
    hashed_names undeclared_elements{growth_of_small_tables};
    std::unordered_map<const void *, hashed_names> attributes; // declared ones, by their element
    hashed_names entities;
    hashed_names parameter_entities;
    hashed_names notations;
    hashed_names identifiers;
    hashed_repeated_names in_tree{no_growth}; // elements and attributes
    price model = 0;                   // of finding a child's name in its parent's content model, at most
    std::size_t uses_of_notations = 0; // in declarations; they are looked up when all are read

    /// The price of an element's look-ups.
    price element() const { return elements.look_up() + undeclared_elements.look_up() + model; }

    /// The price of a reference to an entity while so many are open: the parser compares their names.
    price reference(std::size_t open) const {
        return std::max(entities.look_up(), parameter_entities.look_up()) +
               price_of_comparing(open, std::max(entities.longest_name(), parameter_entities.longest_name()));
    }
};

} // namespace zeb5

#endif
