#include "limits/bounded_validator.h"

#include <algorithm>
#include <string>
#include <unordered_set>

#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/util/XMLString.hpp>

namespace zeb5 {

/// Identifiers come into the parser's table when they are declared or referred to, whichever is first. One
/// attribute may have the same several times.
void bounded_validator::spend_on_identifiers(std::u16string_view text) {
    std::unordered_set<std::u16string, seeded_name_hash> added;
    for (std::size_t end; !text.empty(); text.remove_prefix(std::min(end + 1, text.size()))) {
        meter_.spend(attribute_price + 2 * meter_.names.identifiers.look_up()); // here, and by the parser
        end = std::min(text.find(u' '), text.size());
        const std::u16string name(text.substr(0, end));
        if (!getScanner()->getIDRefList()->containsKey(name.c_str()) && added.insert(name).second)
            meter_.names.identifiers.add(name.c_str());
    }
}

void bounded_validator::validateAttrValue(const xercesc::XMLAttDef *attribute, const XMLCh *value,
                                          bool is_declaration, const xercesc::XMLElementDecl *element) {
    const std::u16string_view text(value);
    const auto names = static_cast<price>(1 + std::count(text.begin(), text.end(), u' '));
    switch (attribute->getType()) {
    case xercesc::XMLAttDef::ID:
    case xercesc::XMLAttDef::IDRef:
    case xercesc::XMLAttDef::IDRefs:
        spend_on_identifiers(text);
        break;
    case xercesc::XMLAttDef::Entity:
    case xercesc::XMLAttDef::Entities:
        meter_.spend(names * (attribute_price + meter_.names.entities.look_up()));
        break;
    default:
        if (const XMLCh *const values = attribute->getEnumeration())
            meter_.spend(names * xercesc::XMLString::stringLen(values) * listed_character_price);
    }
    DTDValidator::validateAttrValue(attribute, value, is_declaration, element);
}

} // namespace zeb5
