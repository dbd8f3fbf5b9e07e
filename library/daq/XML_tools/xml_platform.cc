#include "xml_platform.h"

#include <mutex>

#include <xercesc/util/PlatformUtils.hpp>

namespace {

std::mutex platform_mutex; // Initialize and Terminate count in a plain number

} // namespace

xml_platform::xml_platform() {
    const std::lock_guard<std::mutex> lock(platform_mutex);
    xercesc::XMLPlatformUtils::Initialize();
}

xml_platform::~xml_platform() {
    const std::lock_guard<std::mutex> lock(platform_mutex);
    xercesc::XMLPlatformUtils::Terminate();
}
