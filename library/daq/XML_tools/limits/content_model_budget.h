#ifndef ZEB5_CONTENT_MODEL_BUDGET_H
#define ZEB5_CONTENT_MODEL_BUDGET_H

/// How large the tables could be that a parser makes of the content models of a document.

#include <cstddef>

#include <xercesc/validators/DTD/DTDElementDecl.hpp>

namespace zeb5 {

/// Adds up the size of the tables that element declarations can ask for.
///
/// A parser that validates turns a content model into a table of states, each with an entry for each name.
/// Models in which no name stands twice have about as many states as names; one in which a name stands n
/// times can have 2^n of them: 200 bytes of declaration fill the memory. Such a parser also walks a model by
/// recursion, so that its depth is bounded for the stack's sake, and looks for each child among all names of
/// its parent's model. Any parser reads models, which may come from parameter entities, again and again:
/// their names are bounded for all.
class content_model_budget {
public:
    static constexpr std::size_t most_entries = std::size_t{1} << 18;
    /// Names of all models together, tables or not.
    static constexpr std::size_t most_names = std::size_t{1} << 16;
    /// Names, groups and repetition marks of one model; each takes some 200 bytes of the stack.
    static constexpr std::size_t most_nodes = 1024;

    /// Notes a declaration. Returns whether all of those so far stay within the limits.
    bool declare(const xercesc::DTDElementDecl &element, bool is_validated);

private:
    std::size_t entries_ = 0;
    std::size_t names_ = 0;
};

} // namespace zeb5

#endif
