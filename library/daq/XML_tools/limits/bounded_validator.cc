#include "limits/bounded_validator.h"

#include <algorithm>
#include <string_view>

#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/util/XMLString.hpp>

namespace zeb5 {

namespace {

bool has_references(xercesc::XMLAttDef::AttTypes type) {
    using xercesc::XMLAttDef;
    return type == XMLAttDef::IDRef || type == XMLAttDef::IDRefs || type == XMLAttDef::Entity ||
           type == XMLAttDef::Entities;
}

} // namespace

void bounded_validator::validateAttrValue(const xercesc::XMLAttDef *attribute, const XMLCh *value,
                                          bool is_declaration, const xercesc::XMLElementDecl *element) {
    const std::u16string_view text(value);
    const auto names = static_cast<price>(1 + std::count(text.begin(), text.end(), u' '));
    if (has_references(attribute->getType()))
        meter_.spend(names * (attribute_price + reference_price * getScanner()->getIDRefList()->getCount()));
    else if (const XMLCh *const values = attribute->getEnumeration())
        meter_.spend(names * xercesc::XMLString::stringLen(values) * listed_character_price);
    DTDValidator::validateAttrValue(attribute, value, is_declaration, element);
}

} // namespace zeb5
