#include "xml_platform.h"

#include <mutex>

#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/SecurityManager.hpp>

#include "xml_hardening.h"

namespace {

std::mutex platform_mutex; // Initialize and Terminate count in a plain number

struct expansion_limit : xercesc::SecurityManager {
    expansion_limit() { setEntityExpansionLimit(zeb5::entity_budget::most_expansions); }
};

} // namespace

xml_platform::xml_platform() {
    const std::lock_guard<std::mutex> lock(platform_mutex);
    xercesc::XMLPlatformUtils::Initialize();
}

xml_platform::~xml_platform() {
    const std::lock_guard<std::mutex> lock(platform_mutex);
    xercesc::XMLPlatformUtils::Terminate();
}

namespace zeb5 {

xercesc::SecurityManager *entity_limit() {
    static expansion_limit limit; // outlives every parse: parsers only point to it
    return &limit;
}

void refuse_entities(xercesc::XMLScanner &scanner) {
    XMLCh limit[16];
    xercesc::XMLString::sizeToText(entity_budget::most_expansions, limit, 15, 10);
    scanner.emitError(xercesc::XMLErrs::EntityExpansionLimitExceeded, limit);
}

} // namespace zeb5
