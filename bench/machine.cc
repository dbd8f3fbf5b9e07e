#include "machine.h"

#include <fstream>
#include <thread>

#include <expat.h>
#include <libxml/xmlversion.h>
#include <pugixml.hpp>
#include <xercesc/util/XercesVersion.hpp>

namespace bench {

namespace {

std::string processor() {
    std::ifstream cpuinfo("/proc/cpuinfo");
    for (std::string line; std::getline(cpuinfo, line);)
        if (line.rfind("model name", 0) == 0)
            return line.substr(line.find(':') + 2);
    return "unknown processor";
}

#ifdef __clang__
constexpr char compiler[] = "clang " __clang_version__;
#else
constexpr char compiler[] = "g++ " __VERSION__;
#endif

} // namespace

std::string machine_line() {
    return processor() + ", " + std::to_string(std::thread::hardware_concurrency()) + " cores; " + compiler +
           ", " + ZEB5_BENCH_BUILD_TYPE +
           "; Xerces-C " XERCES_FULLVERSIONDOT ", libxml2 " LIBXML_DOTTED_VERSION ", " + XML_ExpatVersion() +
           ", pugixml " + std::to_string(PUGIXML_VERSION / 1000) + "." +
           std::to_string(PUGIXML_VERSION / 10 % 100);
}

} // namespace bench
