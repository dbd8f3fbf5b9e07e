#include "limits/xml_hardening.h"

#include <xercesc/util/SecurityManager.hpp>

namespace zeb5 {

namespace {

struct expansion_limit : xercesc::SecurityManager {
    expansion_limit() { setEntityExpansionLimit(most_expansions); }
};

} // namespace

xercesc::SecurityManager *entity_limit() {
    // Never gone: parsers point to it, in the last destructors too
    static auto *const limit = new expansion_limit;
    return limit;
}

void refuse_entities(xercesc::XMLScanner &scanner) {
    scanner.emitError(xercesc::XMLErrs::XMLException_Fatal,
                      u"The entities of this document stand for too much text");
}

void refuse_content_models(xercesc::XMLScanner &scanner) {
    scanner.emitError(xercesc::XMLErrs::XMLException_Fatal,
                      u"The content models of this document have too many states");
}

void refuse_declarations(xercesc::XMLScanner &scanner) {
    scanner.emitError(xercesc::XMLErrs::XMLException_Fatal,
                      u"The declarations of this document, with the default values that they give, are too "
                      u"long");
}

void refuse_names(xercesc::XMLScanner &scanner) {
    scanner.emitError(xercesc::XMLErrs::XMLException_Fatal, u"This document has too many names");
}

} // namespace zeb5
