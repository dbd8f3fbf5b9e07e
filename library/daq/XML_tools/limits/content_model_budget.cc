#include "limits/content_model_budget.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <xercesc/validators/common/ContentSpecNode.hpp>

#include "text/name_hash.h"

namespace zeb5 {

bool content_model_budget::declare(const xercesc::DTDElementDecl &element, bool is_validated) {
    const bool has_table = is_validated && element.getModelType() == xercesc::DTDElementDecl::Children;
    std::unordered_map<std::u16string_view, std::size_t, seeded_name_hash> times;
    std::size_t places = 0;
    std::size_t nodes = 0;
    std::vector<const xercesc::ContentSpecNode *> pending{element.getContentSpec()}; // models nest deeply
    while (!pending.empty()) {
        const xercesc::ContentSpecNode *const node = pending.back();
        pending.pop_back();
        if (!node)
            continue;
        ++nodes;
        if (node->getType() == xercesc::ContentSpecNode::Leaf) {
            ++places;
            if (has_table)
                ++times[node->getElement()->getRawName()];
        }
        pending.push_back(node->getFirst());
        pending.push_back(node->getSecond());
    }
    names_ += places;
    if (has_table)
        entries_ += places * places;
    for (const auto &[name, n] : times)
        if (n > 1)
            entries_ += (std::size_t{1} << std::min<std::size_t>(n, 20)) * places; // 2^20 is too many already
    return (!is_validated || nodes <= most_nodes) && names_ <= most_names && entries_ <= most_entries;
}

} // namespace zeb5
