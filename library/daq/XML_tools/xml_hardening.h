#ifndef ZEB5_XML_HARDENING_H
#define ZEB5_XML_HARDENING_H

/// What a document may make the XML parsers do. Both kinds of parser get the same limits here.
///
/// A document is self-contained: an external entity or DTD is reported as missing and never opened, whether
/// file or network address. Expansion of the document's own entities is bounded wherever they expand.

#include <memory>

#include <xercesc/framework/XMLValidator.hpp>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/sax/HandlerBase.hpp>
#include <xercesc/validators/DTD/DTDEntityDecl.hpp>

#include "entity_budget.h"

XERCES_CPP_NAMESPACE_BEGIN
class SAXParser;
class SecurityManager;
class XercesDOMParser;
XERCES_CPP_NAMESPACE_END

namespace zeb5 {

/// Bounds the expansions in content and attributes for all parsers; lasts as long as the process.
xercesc::SecurityManager *entity_limit();

/// Reports a document as beyond the limit, which ends its parse. Does not return.
void refuse_entities(xercesc::XMLScanner &scanner);

/// A parser that refuses a document at the entity declaration that is too much, before anything expands.
template <class Parser> class bounded_parser : public Parser {
private:
    void entityDecl(const xercesc::DTDEntityDecl &entity, const bool is_parameter,
                    const bool is_ignored) override {
        Parser::entityDecl(entity, is_parameter, is_ignored);
        const XMLCh *const text = entity.getValue();
        if (!budget_.declare(entity.getName(), is_parameter, text ? text : u""))
            refuse_entities(scanner());
    }

    xercesc::XMLScanner &scanner() {
        if constexpr (std::is_same_v<Parser, xercesc::SAXParser>)
            return const_cast<xercesc::XMLScanner &>(this->getScanner());
        else
            return *this->getScanner();
    }

    entity_budget budget_;
};

/// Creates a parser that reads as the system's documents are meant: no validation but by `scheme`, no
/// namespaces, no schemas, and hardened.
template <class Parser> std::unique_ptr<Parser> create_parser(typename Parser::ValSchemes scheme) {
    auto parser = std::make_unique<bounded_parser<Parser>>();
    parser->setValidationScheme(scheme);
    parser->setDoNamespaces(false);
    parser->setDoSchema(false);
    parser->setValidationSchemaFullChecking(false);
    parser->setDisableDefaultEntityResolution(true);
    parser->setSecurityManager(entity_limit());
    return parser;
}

} // namespace zeb5

#endif
