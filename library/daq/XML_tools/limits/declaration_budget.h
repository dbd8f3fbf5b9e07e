#ifndef ZEB5_DECLARATION_BUDGET_H
#define ZEB5_DECLARATION_BUDGET_H

/// What the declarations of a document cost, wherever their text came from.

#include <cstddef>

#include <xercesc/framework/XMLAttDefList.hpp>
#include <xercesc/framework/XMLElementDecl.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/validators/DTD/DTDAttDef.hpp>
#include <xercesc/validators/DTD/DTDElementDecl.hpp>

namespace zeb5 {

/// Adds up declarations and default values of attributes, each time that they are made or copied.
///
/// References to parameter entities and within defaults are not counted by the parser, and elements take
/// their defaults without a character of their own: 10,000 bytes of these keep it busy for half a minute and
/// fill 6 GB. All but has_any() return whether all so far stays within the limits.
class declaration_budget {
public:
    static constexpr std::size_t most_characters = std::size_t{1} << 22;
    /// What a declaration counts: its name goes into a table of the parser's, which a document can crowd.
    static constexpr std::size_t characters_of_a_declaration = 256;
    /// What a default counts beyond the characters of its name and its value, as a parser that holds the
    /// whole document makes up to 800 bytes of each that an element takes.
    static constexpr std::size_t characters_of_a_default = 192;
    /// An element in the document itself takes defaults that count no more than this for nothing: it has paid
    /// with its own characters. One that an entity repeats has not.
    static constexpr std::size_t free_defaults = 896;
    /// Of one element. Each element of its name makes the parser walk through all of them.
    static constexpr std::size_t most_attributes = 1024;
    /// Characters of the values that one attribute may choose from. A parser that validates compares each of
    /// them with all others.
    static constexpr std::size_t most_characters_of_values = std::size_t{1} << 16;

    bool declare() { return spend(characters_of_a_declaration); }

    bool declare(const xercesc::DTDAttDef &attribute) {
        return length_of(attribute.getEnumeration()) <= most_characters_of_values &&
               spend(characters_of_a_declaration + length_of(attribute.getValue()));
    }

    /// At the end of each list of an element's attributes: the parser that holds the whole document copies
    /// all defaults of the element then.
    bool copy_defaults(const xercesc::DTDElementDecl &element) {
        return (!element.hasAttDefs() || element.getAttDefList().getAttDefCount() <= most_attributes) &&
               spend(cost_of_defaults(element));
    }

    /// Whether anything is declared: nothing has a default without.
    bool has_any() const { return spent_ != 0; }

    /// Of one element, which stands in the text of an entity or in the document itself. A default counts even
    /// if the element has the attribute: the parser that holds the whole document makes it first and then
    /// puts what is written in its place.
    bool use_defaults(const xercesc::XMLElementDecl &element, bool is_in_entity) {
        const std::size_t cost = cost_of_defaults(element);
        return (!is_in_entity && cost <= free_defaults) || spend(cost);
    }

private:
    static std::size_t cost_of_defaults(const xercesc::XMLElementDecl &element) {
        if (!element.hasAttDefs())
            return 0;
        const xercesc::XMLAttDefList &all = element.getAttDefList();
        std::size_t cost = 0;
        for (XMLSize_t i = 0; i < all.getAttDefCount(); ++i)
            if (const xercesc::XMLAttDef &attribute = all.getAttDef(i); attribute.getValue())
                cost += characters_of_a_default + length_of(attribute.getFullName()) +
                        length_of(attribute.getValue());
        return cost;
    }

    /// 0 for a null text.
    static std::size_t length_of(const XMLCh *text) { return xercesc::XMLString::stringLen(text); }

    bool spend(std::size_t characters) {
        spent_ += characters;
        return spent_ <= most_characters;
    }

    std::size_t spent_ = 0;
};

} // namespace zeb5

#endif
