#ifndef ZEB5_CONTENT_MODEL_BUDGET_H
#define ZEB5_CONTENT_MODEL_BUDGET_H

/// How large the tables could be that a parser makes of the content models of a document.

#include <cstddef>

#include <xercesc/validators/DTD/DTDElementDecl.hpp>

namespace zeb5 {

/// Adds up the size of the tables that element declarations can ask for.
///
/// A parser that validates turns a content model into a table of states. One in which a name stands n times
/// can have 2^n of them: 200 bytes of declaration fill the memory. Models in which no name stands twice cost
/// nothing here.
class content_model_budget {
public:
    static constexpr std::size_t most_entries = std::size_t{1} << 18;

    /// Notes a declaration. Returns whether all of those so far stay within the limit.
    bool declare(const xercesc::DTDElementDecl &element);

private:
    std::size_t entries_ = 0;
};

} // namespace zeb5

#endif
