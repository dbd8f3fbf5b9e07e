#include "bare.h"

#include <stdexcept>

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/framework/XMLPScanToken.hpp>
#include <xercesc/parsers/SAXParser.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/HandlerBase.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/SecurityManager.hpp>

namespace bench {

namespace {

template <class Parser>
void set_up(Parser &parser, xercesc::SecurityManager &limit, typename Parser::ValSchemes scheme) {
    parser.setValidationScheme(scheme);
    parser.setDoNamespaces(false);
    parser.setDoSchema(false);
    parser.setValidationSchemaFullChecking(false);
    parser.setDisableDefaultEntityResolution(true);
    parser.setSecurityManager(&limit);
}

template <class Source> std::size_t scan(const Source &source) {
    xercesc::HandlerBase nobody;
    xercesc::SecurityManager limit;
    xercesc::SAXParser parser;
    set_up(parser, limit, xercesc::SAXParser::Val_Auto);
    parser.setDocumentHandler(&nobody);
    parser.setErrorHandler(&nobody);
    parser.setDTDHandler(&nobody);
    xercesc::XMLPScanToken token;
    if (!parser.parseFirst(source, token))
        throw std::runtime_error("the bare scan does not start");
    std::size_t steps = 0;
    while (parser.parseNext(token))
        ++steps;
    if (parser.getErrorCount())
        throw std::runtime_error("the bare scan met an error");
    return steps;
}

} // namespace

std::size_t bare_scan(const std::string &document) {
    return scan(xercesc::MemBufInputSource(reinterpret_cast<const XMLByte *>(document.data()),
                                           document.size(), "document", false));
}

std::size_t bare_scan_file(const char *path) { return scan(path); }

void bare_dom_file(const char *path) {
    xercesc::HandlerBase nobody;
    xercesc::SecurityManager limit;
    xercesc::XercesDOMParser parser;
    set_up(parser, limit, xercesc::XercesDOMParser::Val_Never);
    parser.setErrorHandler(&nobody);
    parser.parse(path);
    if (!parser.getDocument() || parser.getErrorCount())
        throw std::runtime_error("the bare tree met an error");
}

void bare_platform() {
    xercesc::XMLPlatformUtils::Initialize();
    xercesc::XMLPlatformUtils::Terminate();
}

} // namespace bench
