#include "xml_platform.h"

#include <mutex>

#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>

namespace {

std::mutex platform_mutex; // Initialize and Terminate count in a plain number
/// Memory ran out on the way up: Xerces takes itself for started, and whoever uses it crashes.
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
