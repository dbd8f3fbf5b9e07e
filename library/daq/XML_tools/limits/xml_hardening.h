#ifndef ZEB5_XML_HARDENING_H
#define ZEB5_XML_HARDENING_H

/// What a document may make the XML parsers do. Both kinds of parser get their limits here; they differ where
/// only one kind does what a limit bounds.
///
/// A document is self-contained: an external entity or DTD is reported as missing and never opened, whether
/// file or network address. Expansion of the document's own entities is bounded wherever they expand.

#include <memory>
#include <type_traits>

#include <xercesc/framework/XMLValidator.hpp>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/validators/DTD/DTDEntityDecl.hpp>

#include "limits/bounded_validator.h"
#include "limits/content_model_budget.h"
#include "limits/declaration_budget.h"
#include "limits/entity_budget.h"
#include "limits/name_budget.h"
#include "limits/parser_files.h"
#include "limits/parser_memory.h"
#include "xml_platform.h"

XERCES_CPP_NAMESPACE_BEGIN
class SAXParser;
class SecurityManager;
class XercesDOMParser;
XERCES_CPP_NAMESPACE_END

namespace zeb5 {

/// Of all entities, in content and attributes together; the parsers count these themselves.
inline constexpr XMLSize_t most_expansions = 1000;

/// Bounds the expansions in content and attributes for all parsers; lasts as long as the process.
xercesc::SecurityManager *entity_limit();

/// Report a document as beyond a limit, which ends its parse. They do not return.
void refuse_entities(xercesc::XMLScanner &scanner);
void refuse_content_models(xercesc::XMLScanner &scanner);
void refuse_declarations(xercesc::XMLScanner &scanner);
void refuse_names(xercesc::XMLScanner &scanner);

/// What a parser has of memory and files; a base of the parser, so that they are there before it and after
/// it.
struct parser_belongings {
    std::unique_ptr<xml_platform> platform; // null: whoever uses the parser holds it
    parser_memory memory;
    parser_files files{memory};
};

/// A parser that refuses a document at the declaration or the element that is too much, before anything comes
/// of it, and that leaves nothing behind.
template <class Parser> class bounded_parser final : public parser_belongings, public Parser {
public:
    bounded_parser() : Parser(create_validator(memory), &memory) {
        if constexpr (is_sax) // which tells only a validator of its own making whom to report to
            const_cast<xercesc::XMLValidator &>(this->getValidator()).setErrorReporter(this);
    }

    // Not in memory of the platform, as the base class would have it: that is gone when the parser is
    static void *operator new(std::size_t size) { return ::operator new(size); }
    static void operator delete(void *memory) { ::operator delete(memory); }

private:
    /// Only the SAX parser validates.
    static constexpr bool is_sax = std::is_same_v<Parser, xercesc::SAXParser>;

    void startElement(const xercesc::XMLElementDecl &element, const unsigned uri, const XMLCh *const prefix,
                      const xercesc::RefVectorOf<xercesc::XMLAttr> &attributes, const XMLSize_t count,
                      const bool is_empty, const bool is_root) override {
        if (count != 0 && declarations_.has_any())
            spend(declarations_.use_defaults(element, is_in_entity()));
        if constexpr (!is_sax) {
            if (!names_.use(element, attributes, count))
                refuse_names(scanner());
            forget_identifiers(attributes, count);
        }
        Parser::startElement(element, uri, prefix, attributes, count, is_empty, is_root);
    }

    /// The parser's to delete.
    static xercesc::XMLValidator *create_validator(parser_memory &memory) {
        if constexpr (is_sax)
            return new (&memory) bounded_validator;
        else
            return nullptr;
    }

    void entityDecl(const xercesc::DTDEntityDecl &entity, const bool is_parameter,
                    const bool is_ignored) override {
        Parser::entityDecl(entity, is_parameter, is_ignored);
        const XMLCh *const text = entity.getValue();
        if (!entities_.declare(entity.getName(), is_parameter, text ? text : u""))
            refuse_entities(scanner());
        spend(declarations_.declare());
    }

    void elementDecl(const xercesc::DTDElementDecl &element, const bool is_ignored) override {
        Parser::elementDecl(element, is_ignored);
        if (!content_models_.declare(element, is_sax))
            refuse_content_models(scanner());
        spend(declarations_.declare());
    }

    void attDef(const xercesc::DTDElementDecl &element, const xercesc::DTDAttDef &attribute,
                const bool is_ignored) override {
        Parser::attDef(element, attribute, is_ignored);
        spend(declarations_.declare(attribute));
    }

    void notationDecl(const xercesc::XMLNotationDecl &notation, const bool is_ignored) override {
        Parser::notationDecl(notation, is_ignored);
        spend(declarations_.declare());
    }

    void endAttList(const xercesc::DTDElementDecl &element) override {
        spend(declarations_.copy_defaults(element));
        Parser::endAttList(element);
    }

    /// The parser that holds the whole document would keep its declarations as a text, too.
    void startIntSubset() override {}

    /// It would keep a table of identifiers, which takes the square of their number when they are alike.
    static void forget_identifiers(const xercesc::RefVectorOf<xercesc::XMLAttr> &attributes,
                                   XMLSize_t count) {
        for (XMLSize_t i = 0; i < count; ++i)
            if (const xercesc::XMLAttr *const attribute = attributes.elementAt(i);
                attribute->getType() == xercesc::XMLAttDef::ID)
                const_cast<xercesc::XMLAttr *>(attribute)->setType(xercesc::XMLAttDef::CData);
    }

    void spend(bool is_within_budget) {
        if (!is_within_budget)
            refuse_declarations(scanner());
    }

    /// Whether what is reported stands in the text of an entity rather than in the document's own.
    bool is_in_entity() { return scanner().getReaderMgr()->getReaderDepth() > 1; }

    xercesc::XMLScanner &scanner() {
        if constexpr (is_sax)
            return const_cast<xercesc::XMLScanner &>(this->getScanner());
        else
            return *this->getScanner();
    }

    entity_budget entities_;
    content_model_budget content_models_;
    declaration_budget declarations_;
    name_budget names_; // of the parser that holds the whole document
};

/// Creates a parser that reads as the system's documents are meant: no validation but by `scheme`, no
/// namespaces, no schemas, and hardened.
template <class Parser>
std::unique_ptr<bounded_parser<Parser>> create_parser(typename Parser::ValSchemes scheme) {
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
