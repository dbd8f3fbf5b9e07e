#include "limits/bounded_validator.h"

#include <xercesc/framework/XMLErrorCodes.hpp>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/util/XMLString.hpp>

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
            getScanner()->emitError(xercesc::XMLErrs::XMLException_Fatal,
                                    u"The attributes of this document have too many references");
    }
    DTDValidator::validateAttrValue(attribute, value, is_declaration, element);
}

} // namespace zeb5
