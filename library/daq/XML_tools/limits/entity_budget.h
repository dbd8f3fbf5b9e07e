#ifndef ZEB5_ENTITY_BUDGET_H
#define ZEB5_ENTITY_BUDGET_H

/// How much text the entities of a document would expand to, known before any of them expands.

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "text/name_hash.h"

namespace zeb5 {

/// Adds up what each declared entity reaches through the entities that its text refers to.
///
/// The parser counts the expansions in content and attributes itself; those inside of declarations, of
/// parameter entities and of entities in defaults of attributes, it does not, and 700 bytes of them keep it
/// busy for minutes.
class entity_budget {
public:
    /// References to entities, declared or not, that one entity may reach. Defaults and parameter entities
    /// refer to it uncounted, an expansion takes up to 10 microseconds, and so does the report of one that is
    /// missing in an attribute.
    static constexpr std::size_t most_nested = 16;
    /// Of an entity's own text, and as many of the text that it reaches. What is written out of it 1,000
    /// times is still small.
    static constexpr std::size_t most_characters = 4096;
    /// What each "<" and each "=" counts beyond itself, as a parser that holds the whole document makes up to
    /// 500 bytes of a tag or an attribute.
    static constexpr std::size_t characters_of_markup = 32;

    /// Notes a declaration; general and parameter entities have names of their own kind. Returns whether
    /// every entity declared so far stays within the limits. An external entity, which is never opened, has
    /// an empty text.
    bool declare(std::u16string_view name, bool is_parameter, std::u16string_view text);

private:
    struct weight {
        std::size_t expansions = 0;
        std::size_t characters = 0;
    };
    struct entity {
        bool declared = false;
        weight nested;                  // reached through its references
        std::size_t length = 0;         // of its own text
        std::vector<std::size_t> users; // entities that refer to it, once for each reference
    };

    std::size_t number_of(std::u16string name);
    bool add(std::size_t user, weight more);

    std::unordered_map<std::u16string, std::size_t, seeded_name_hash> numbers_;
    std::vector<entity> entities_;
};

} // namespace zeb5

#endif
