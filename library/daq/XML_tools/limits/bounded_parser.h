#ifndef ZEB5_BOUNDED_PARSER_H
#define ZEB5_BOUNDED_PARSER_H

/// The XML library's parsers, made to refuse what limits.h says, and to leave nothing behind.
///
/// A document is self-contained: an external entity or DTD is reported as missing and never opened, whether
/// file or network address.

#include <algorithm>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>

#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/framework/XMLValidator.hpp>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/util/RefVectorOf.hpp>
#include <xercesc/validators/DTD/DTDAttDef.hpp>
#include <xercesc/validators/DTD/DTDElementDecl.hpp>
#include <xercesc/validators/DTD/DTDEntityDecl.hpp>

#include "limits/bounded_validator.h"
#include "limits/parse_meter.h"
#include "limits/parser_memory.h"
#include "limits/parser_streams.h"
#include "xml_platform.h"

XERCES_CPP_NAMESPACE_BEGIN
class SAXParser;
class XercesDOMParser;
XERCES_CPP_NAMESPACE_END

namespace zeb5 {

/// What a parser has of memory and streams, and its meter; a base of the parser, so that they are there
/// before it and after it.
struct parser_belongings : parse_meter {
    std::unique_ptr<xml_platform> platform; // null: whoever uses the parser holds it
    parser_memory memory{*this};
    parser_streams streams{*this, memory};
    bool is_under_way = false; // a pull reader is in the middle of a document
};

/// The content model of a declared element.
struct model_size {
    std::size_t nodes = 0;   // names, groups and marks
    std::size_t entries = 0; // of the table of its states, at most, if names stand in it repeatedly; else 0
};
/// Its names come into the table of elements, and each child will be looked for among them.
model_size size_of_model(const xercesc::DTDElementDecl &element, document_names &names);

/// Otherwise the parser has the element in a table for those that no declaration names.
inline bool is_named_by_declarations(const xercesc::XMLElementDecl &element) {
    const auto reason = element.getCreateReason();
    return reason != xercesc::XMLElementDecl::NoReason && reason != xercesc::XMLElementDecl::JustFaultIn;
}

// Prices of what has parts

std::size_t number_of_values(const xercesc::DTDAttDef &declaration);
price price_of_attribute(const xercesc::DTDAttDef &declaration);
price price_of_declared_attributes(const xercesc::XMLElementDecl &element);
price price_of_element(const xercesc::XMLElementDecl &element,
                       const xercesc::RefVectorOf<xercesc::XMLAttr> &attributes, XMLSize_t count,
                       const document_names &names);

/// Adds the names of an element and its attributes; returns how many different ones there are so far.
std::size_t add_names(hashed_repeated_names &names, const xercesc::XMLElementDecl &element,
                      const xercesc::RefVectorOf<xercesc::XMLAttr> &attributes, XMLSize_t count);

/// The parser of a tree would keep a table of identifiers, which takes the square of their number when they
/// are alike.
void forget_identifiers(const xercesc::RefVectorOf<xercesc::XMLAttr> &attributes, XMLSize_t count);

template <class Parser> class bounded_parser final : public parser_belongings, public Parser {
public:
    bounded_parser() : Parser(create_validator(*this), &memory) {
        if constexpr (is_sax) // which tells only a validator of its own making whom to report to
            const_cast<xercesc::XMLValidator &>(this->getValidator()).setErrorReporter(this);
    }

    ~bounded_parser() override { stop_charging(); }
    bounded_parser(const bounded_parser &) = delete;
    bounded_parser &operator=(const bounded_parser &) = delete;

    // Not in memory of the platform, as the base class would have it: that is gone when the parser is
    static void *operator new(std::size_t size) { return ::operator new(size); }
    static void operator delete(void *memory) { ::operator delete(memory); }

private:
    /// Only the SAX parser validates.
    static constexpr bool is_sax = std::is_same_v<Parser, xercesc::SAXParser>;

    /// The parser's to delete.
    static xercesc::XMLValidator *create_validator(parser_belongings &own) {
        if constexpr (is_sax)
            return new (&own.memory) bounded_validator(own);
        else
            return nullptr;
    }

    // Charging begins here: a refusal before startDocument() would leave the parser's first call as an
    // exception

    void startDocument() override {
        undeclared_ = 0;
        most_attributes_ = 0;
        charge();
        Parser::startDocument();
    }

    void endDocument() override {
        stop_charging();
        Parser::endDocument();
    }

    void error(const unsigned code, const XMLCh *const domain, const xercesc::XMLErrorReporter::ErrTypes type,
               const XMLCh *const text, const XMLCh *const system_id, const XMLCh *const public_id,
               const XMLFileLoc line, const XMLFileLoc column) override {
        if (type == xercesc::XMLErrorReporter::ErrType_Fatal)
            stop_charging(); // it is the last one
        Parser::error(code, domain, type, text, system_id, public_id, line, column);
        spend(report_price + names.entities.look_up());
    }

    /// The root that the DOCTYPE names comes into the table of elements.
    void doctypeDecl(const xercesc::DTDElementDecl &element, const XMLCh *const public_id,
                     const XMLCh *const system_id, const bool has_internal,
                     const bool has_external) override {
        names.elements.add(element.getFullName());
        Parser::doctypeDecl(element, public_id, system_id, has_internal, has_external);
    }

    void elementDecl(const xercesc::DTDElementDecl &element, const bool is_ignored) override {
        Parser::elementDecl(element, is_ignored);
        const auto [nodes, entries] = size_of_model(element, names);
        if (!is_sax) {
            names.model = 0; // nobody looks for children in it
            return declare(nodes * (model_node_price + names.elements.look_up()));
        }
        if (nodes > most_model_nodes || entries > most_model_entries)
            refuse(u"A content model of this document has too many names");
        declare(nodes * (nodes * validated_model_price + names.elements.look_up()) +
                entries * model_entry_price);
    }

    void attDef(const xercesc::DTDElementDecl &element, const xercesc::DTDAttDef &attribute,
                const bool is_ignored) override {
        Parser::attDef(element, attribute, is_ignored);
        names.elements.add(element.getFullName());
        hashed_names &declared = names.attributes.try_emplace(&element, growth_of_small_tables).first->second;
        if (!is_ignored)
            declared.add(attribute.getFullName());
        if (attribute.getType() == xercesc::XMLAttDef::Notation)
            use_notations(number_of_values(attribute));
        declare(price_of_attribute(attribute) + declared.look_up());
    }

    void entityDecl(const xercesc::DTDEntityDecl &entity, const bool is_parameter,
                    const bool is_ignored) override {
        if constexpr (is_sax) // the tree's own list of entities and notations is not needed
            Parser::entityDecl(entity, is_parameter, is_ignored);
        if (entity.getNotationName())
            use_notations(1);
        hashed_names &declared = is_parameter ? names.parameter_entities : names.entities;
        if (!is_ignored)
            declared.add(entity.getName());
        declare(character_price * entity.getValueLen() + declared.look_up());
    }

    void notationDecl(const xercesc::XMLNotationDecl &notation, const bool is_ignored) override {
        if constexpr (is_sax)
            Parser::notationDecl(notation, is_ignored);
        const price before = names.notations.look_up();
        if (!is_ignored)
            names.notations.add(notation.getName());
        const price now = names.notations.look_up(); // less than before where the parser's table has grown
        if (now > before)
            spend(names.uses_of_notations * (now - before));
        declare(now);
    }

    void endAttList(const xercesc::DTDElementDecl &element) override {
        names.elements.add(element.getFullName()); // a list without attributes, too, brings it into the table
        spend(price_of_declared_attributes(element) + names.element());
        Parser::endAttList(element);
    }

    // Behind each of them a reader may get the same step once more

    void docComment(const XMLCh *const comment) override {
        spend(element_price);
        Parser::docComment(comment);
    }

    void docPI(const XMLCh *const target, const XMLCh *const data) override {
        spend(element_price);
        Parser::docPI(target, data);
    }

    /// The parser of a tree would keep its declarations as a text, too.
    void startIntSubset() override {}

    void startElement(const xercesc::XMLElementDecl &element, const unsigned uri, const XMLCh *const prefix,
                      const xercesc::RefVectorOf<xercesc::XMLAttr> &attributes, const XMLSize_t count,
                      const bool is_empty, const bool is_root) override {
        if (!is_named_by_declarations(element) && element.getId() > undeclared_) {
            undeclared_ = element.getId();
            names.undeclared_elements.add(element.getFullName());
        }
        spend(price_of_element(element, attributes, count, names));
        if (count != 0) // the parser clears its table of the undeclared ones, which never shrinks
            spend(most_attributes_ = std::max(most_attributes_, count));
        if (element.getId() > most_names)
            refuse_names();
        if constexpr (!is_sax) {
            if (add_names(names.in_tree, element, attributes, count) > most_names)
                refuse_names();
            spend((1 + count) * names.in_tree.look_up());
            forget_identifiers(attributes, count);
        }
        Parser::startElement(element, uri, prefix, attributes, count, is_empty, is_root);
    }

    void declare(price more) { spend(declaration_price + more); }

    void use_notations(std::size_t count) {
        names.uses_of_notations += count;
        spend(count * names.notations.look_up());
    }

    void refuse_names() { refuse(u"This document has too many names"); }

    void end_with(const char16_t *reason) override {
        xercesc::XMLScanner *scanner;
        if constexpr (is_sax)
            scanner = const_cast<xercesc::XMLScanner *>(&this->getScanner());
        else
            scanner = this->getScanner();
        scanner->emitError(xercesc::XMLErrs::XMLException_Fatal, reason); // ends the parse
    }

    XMLSize_t undeclared_ = 0;      // elements
    XMLSize_t most_attributes_ = 0; // of one element
};

/// Creates a parser that reads as the system's documents are meant: no validation but by `scheme`, no
/// namespaces, no schemas, and bounded.
template <class Parser>
std::unique_ptr<bounded_parser<Parser>> create_parser(typename Parser::ValSchemes scheme) {
    auto parser = std::make_unique<bounded_parser<Parser>>();
    parser->setValidationScheme(scheme);
    parser->setDoNamespaces(false);
    parser->setDoSchema(false);
    parser->setValidationSchemaFullChecking(false);
    parser->setDisableDefaultEntityResolution(true);
    return parser;
}

} // namespace zeb5

#endif
