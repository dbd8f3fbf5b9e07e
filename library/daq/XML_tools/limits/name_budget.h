#ifndef ZEB5_NAME_BUDGET_H
#define ZEB5_NAME_BUDGET_H

/// How many names a document may make up.

#include <cstddef>
#include <string>
#include <unordered_set>

#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/framework/XMLElementDecl.hpp>
#include <xercesc/util/RefVectorOf.hpp>
#include <xercesc/util/XMLString.hpp>

#include "text/name_hash.h"

namespace zeb5 {

/// Counts the names of attributes, and of elements that are not declared: declarations are counted elsewhere.
///
/// The parser that holds the whole document keeps each name once, in a table of 257 lists that does not grow:
/// the time goes with the square of their number, and a million would take five minutes.
class name_budget {
public:
    static constexpr std::size_t most_names = std::size_t{1} << 15; // of either kind

    /// Notes an element with its attributes. Returns whether the names so far stay within the limit.
    bool use(const xercesc::XMLElementDecl &element, const xercesc::RefVectorOf<xercesc::XMLAttr> &attributes,
             XMLSize_t count) {
        for (XMLSize_t i = 0; i < count; ++i) {
            const XMLCh *const name = attributes.elementAt(i)->getQName();
            if (xercesc::XMLString::equals(name, last_.c_str()))
                continue; // most elements of a file have one attribute, and the same
            last_ = name;
            of_attributes_.insert(last_);
        }
        return element.getId() <= most_names && of_attributes_.size() <= most_names; // ids count from 1
    }

private:
    std::u16string last_; // attribute looked at
    std::unordered_set<std::u16string, seeded_name_hash> of_attributes_;
};

} // namespace zeb5

#endif
