#include "limits/hashed_names.h"

#include <cstdint>

#include <xercesc/util/XMLString.hpp>

namespace zeb5 {

void hashed_names::add(const XMLCh *name) {
    if (lists_.empty())
        lists_.resize(growth_.first_lists);
    if (growth_.lists != 0 && hashes_.size() >= lists_.size() * growth_.names / growth_.lists) {
        lists_.assign(lists_.size() * growth_.factor + 1, 0);
        longest_list_ = 0;
        for (const std::size_t hash : hashes_)
            put(hash);
    }
    longest_name_ = std::max(longest_name_, xercesc::XMLString::stringLen(name));
    hashes_.push_back(xercesc::XMLString::hash(name, SIZE_MAX));
    put(hashes_.back());
}

std::size_t hashed_repeated_names::add(const XMLCh *name) {
    if (last_ != name) { // a document often repeats the name before
        last_ = name;
        if (names_.insert(last_).second)
            hashed_names::add(name);
    }
    return names_.size();
}

} // namespace zeb5
