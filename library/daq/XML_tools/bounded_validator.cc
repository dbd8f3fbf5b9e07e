#include "bounded_validator.h"

#include <xercesc/util/XMLString.hpp>

#include "xml_hardening.h"

namespace zeb5 {

namespace {

bool are_references(xercesc::XMLAttDef::AttTypes type) {
    using xercesc::XMLAttDef;
    return type == XMLAttDef::IDRef || type == XMLAttDef::IDRefs || type == XMLAttDef::Entity ||
           type == XMLAttDef::Entities;
}

} // namespace

void bounded_validator::validateAttrValue(const xercesc::XMLAttDef *attribute, const XMLCh *value,
                                          bool is_declaration, const xercesc::XMLElementDecl *element) {
    if (are_references(attribute->getType())) {
        characters_ += xercesc::XMLString::stringLen(value);
        if (characters_ > most_characters)
            refuse_references(*getScanner());
    }
    DTDValidator::validateAttrValue(attribute, value, is_declaration, element);
}

} // namespace zeb5
