#ifndef ZEB5_HASHED_NAMES_H
#define ZEB5_HASHED_NAMES_H

/// Follows the hash tables of the XML library. Their hash function has no seed, so a document can choose names
/// that all stand in one list of a table, and a look-up compares the whole list.

#include <algorithm>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include <xercesc/util/XercesDefs.hpp>

#include "limits/limits.h"
#include "text/name_hash.h"

namespace zeb5 {

/// The names of one table. It has `lists` lists at first, and grows when it has `most` names for each list.
class hashed_names {
public:
    explicit hashed_names(std::size_t lists = 109, double most = 0.75) : first_lists_(lists), most_(most) {}

    /// A name comes into the table, which does not have it yet.
    void add(const XMLCh *name);

    /// The price of a look-up, at most.
    price look_up() const { return longest_list_ * (compared_name_price + compared_character_price * longest_name_); }

    /// The price of a character of a text that is full of look-ups: the shortest is "&a;".
    price character() const { return longest_list_ * (compared_name_price / 3 + compared_character_price); }

private:
    void put(std::size_t hash) { longest_list_ = std::max(longest_list_, ++lists_[hash % lists_.size()]); }

    std::size_t first_lists_;
    double most_;
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

/// All tables that a document fills.
struct document_names {
    hashed_repeated_names elements; // declared, or named by declarations
    hashed_names undeclared_elements{29};
    std::unordered_map<const void *, hashed_names> attributes; // declared ones, by their element
    hashed_names entities;
    hashed_names parameter_entities;
    hashed_names notations;
    hashed_names identifiers;
    hashed_repeated_names in_tree{257, 1e18}; // elements and attributes; this table never grows

    /// The price of an element's look-up.
    price element() const { return elements.look_up() + undeclared_elements.look_up(); }

    /// The price of an entity of so many characters that is expanded.
    price expansion(std::size_t characters) const {
        return std::max(entities.look_up(), parameter_entities.look_up()) +
               characters * std::max({character_price, entities.character(), parameter_entities.character()});
    }
};

} // namespace zeb5

#endif
