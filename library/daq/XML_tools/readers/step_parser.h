#ifndef ZEB5_STEP_PARSER_H
#define ZEB5_STEP_PARSER_H

/// The parser of the readers. It takes the steps of the pull readers, but nobody takes a text over from it,
/// so each tag and each text has the memory of the one before. A block for each, as the pull readers have it,
/// would take a tenth of the time of reading through the XML library.

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include <xercesc/framework/XMLPScanToken.hpp>
#include <xercesc/parsers/SAXParser.hpp>
#include <xercesc/sax/HandlerBase.hpp>

#include "steps/narrow_text.h"
#include "steps/sax_step_handlers.h"

namespace zeb5 {

/// What the current step delivers, with the names that the pull readers' handlers have.
struct step_handlers final : xercesc::HandlerBase {
    struct attribute {
        char *name;
        char *type;
        char *value;
    };

    step_handlers() = default;
    ~step_handlers() override { sax_step_handlers::drop_attributes(*this); }
    step_handlers(const step_handlers &) = delete;
    step_handlers &operator=(const step_handlers &) = delete;

    void startElement(const XMLCh *const name, xercesc::AttributeList &attributes) override {
        sax_step_handlers::start_element(*this, name, attributes);
    }
    void endElement(const XMLCh *const) override { end_flag = true; }
    void characters(const XMLCh *const chars, const XMLSize_t length) override {
        sax_step_handlers::characters(*this, chars, length);
    }
    void resetDocument() override { sax_step_handlers::reset_document(*this); }
    void warning(const xercesc::SAXParseException &problem) override {
        sax_step_handlers::report(*this, "Warning", problem);
    }
    void error(const xercesc::SAXParseException &problem) override {
        sax_step_handlers::report(*this, "Error", problem);
    }
    void fatalError(const xercesc::SAXParseException &problem) override {
        sax_step_handlers::report(*this, "Fatal Error", problem);
    }

    std::uint32_t fElementCount = 0;
    std::uint32_t fAttrCount = 0;
    std::uint32_t fCharacterCount = 0;
    std::uint32_t fSpaceCount = 0;
    reused_text tag;
    reused_text value;
    std::vector<attribute *> vattr;
    int error_count = 0;
    bool end_flag = false;
};

/// One document. Not started, with a message, when the platform does not start.
struct step_parser {
    step_parser() {
        auto platform = sax_step_handlers::open_platform();
        if (!platform)
            return;
        parser = sax_step_handlers::create_parser(std::move(platform), handler);
        init = true;
    }

    bool init = false;
    bool gotMore = true;
    std::unique_ptr<xercesc::SAXParser> parser; // owns the platform; ends after the handlers
    xercesc::XMLPScanToken token;
    step_handlers handler;
};

} // namespace zeb5

#endif
