#include "xml_platform.h"

#include <mutex>

#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>

namespace {

std::mutex platform_mutex; // Xerces counts these calls in a variable that is not atomic
/// Memory ran out while Xerces started. It now considers itself started, and any use of it crashes.
bool is_lost = false;

} // namespace

xml_platform::xml_platform() {
    const std::lock_guard<std::mutex> lock(platform_mutex);
    if (is_lost)
        throw xercesc::OutOfMemoryException();
    try {
        xercesc::XMLPlatformUtils::Initialize();
    } catch (const xercesc::OutOfMemoryException &) {
        is_lost = true;
        throw;
    }
}

xml_platform::~xml_platform() {
    const std::lock_guard<std::mutex> lock(platform_mutex);
    xercesc::XMLPlatformUtils::Terminate();
}
