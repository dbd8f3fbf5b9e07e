#ifndef ZEB5_STEP_PARSER_H
#define ZEB5_STEP_PARSER_H

/// The parser behind a pull reader.

#include <memory>

#include <xercesc/framework/XMLElementDecl.hpp>
#include <xercesc/parsers/SAXParser.hpp>

#include "sax_step_handlers.h"
#include "xml_hardening.h"

namespace zeb5 {

/// Takes text and tags from the scanner to the handlers itself. The way of its base class, through the
/// interface for document handlers, costs 6 % of the instructions of reading channels; it is left to elements
/// with attributes and to what is rare.
template <class Handlers> class step_parser final : public bounded_parser<xercesc::SAXParser> {
public:
    explicit step_parser(Handlers &handlers) : handlers_(handlers) {
        setDocumentHandler(&handlers);
        setErrorHandler(&handlers);
        setDTDHandler(&handlers); // without one the parser does not hear of entity declarations
    }

private:
    using base = bounded_parser<xercesc::SAXParser>;

    void startElement(const xercesc::XMLElementDecl &element, const unsigned int uri,
                      const XMLCh *const prefix, const xercesc::RefVectorOf<xercesc::XMLAttr> &attributes,
                      const XMLSize_t count, const bool is_empty, const bool is_root) override {
        if (!is_empty)
            ++depth_;
        if (count != 0)
            return base::startElement(element, uri, prefix, attributes, count, is_empty, is_root);
        sax_step_handlers::start_element(handlers_, element.getFullName(), element.getId());
        if (is_empty)
            sax_step_handlers::end_element(handlers_);
    }

    void endElement(const xercesc::XMLElementDecl &, const unsigned int, const bool,
                    const XMLCh *const) override {
        sax_step_handlers::end_element(handlers_);
        if (depth_ != 0)
            --depth_;
    }

    /// Text around the root is of no interest.
    void docCharacters(const XMLCh *const text, const XMLSize_t length, const bool) override {
        if (depth_ != 0)
            sax_step_handlers::characters(handlers_, text, length);
    }

    /// The base class counts only the elements that are left to it, and would take the others for closed.
    void ignorableWhitespace(const XMLCh *const text, const XMLSize_t length, const bool) override {
        if (depth_ != 0)
            handlers_.ignorableWhitespace(text, length);
    }

    void resetDocument() override {
        depth_ = 0;
        base::resetDocument();
    }

    Handlers &handlers_;
    XMLSize_t depth_ = 0; // elements open
};

/// `handlers` must outlive the parser.
template <class Handlers> std::unique_ptr<xercesc::SAXParser> create_step_parser(Handlers &handlers) {
    return create_parser<step_parser<Handlers>>(xercesc::SAXParser::Val_Auto, handlers);
}

} // namespace zeb5

#endif
