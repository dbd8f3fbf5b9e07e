#include "xml_hardening.h"

#include <filesystem>
#include <system_error>

#include <xercesc/util/SecurityManager.hpp>
#include <xercesc/util/XMLString.hpp>

namespace zeb5 {

namespace {

struct expansion_limit : xercesc::SecurityManager {
    expansion_limit() { setEntityExpansionLimit(entity_budget::most_expansions); }
};

} // namespace

xercesc::SecurityManager *entity_limit() {
    // Never gone: parsers point to it, in the last destructors too
    static auto *const limit = new expansion_limit;
    return limit;
}

void refuse_entities(xercesc::XMLScanner &scanner) {
    XMLCh limit[16];
    xercesc::XMLString::sizeToText(entity_budget::most_expansions, limit, 15, 10);
    scanner.emitError(xercesc::XMLErrs::EntityExpansionLimitExceeded, limit);
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

bool is_folder(const char *path) {
    std::error_code none;
    return std::filesystem::is_directory(path, none);
}

} // namespace zeb5
