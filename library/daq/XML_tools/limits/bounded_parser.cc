#include "limits/bounded_parser.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <xercesc/framework/XMLAttDefList.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/validators/common/ContentSpecNode.hpp>

namespace zeb5 {

namespace {

/// So many attributes of one element are compared with each other in no time.
constexpr XMLSize_t few_attributes = 32;

/// 0 for a null text.
price of_characters(const XMLCh *text) { return character_price * xercesc::XMLString::stringLen(text); }

/// Of those that an element has. Each is looked up among the declared ones, and among those before it.
price price_of_attributes(const xercesc::XMLElementDecl &element,
                          const xercesc::RefVectorOf<xercesc::XMLAttr> &attributes, XMLSize_t count,
                          const document_names &names) {
    price sum = 0;
    if (const auto declared = names.attributes.find(&element); declared != names.attributes.end())
        sum += count * declared->second.look_up();
    hashed_names written(growth_of_sets);
    for (XMLSize_t i = 0; i < count; ++i) {
        const XMLCh *const name = attributes.elementAt(i)->getQName();
        sum += attribute_price + of_characters(name) + of_characters(attributes.elementAt(i)->getValue());
        if (count > few_attributes)
            written.add(name);
    }
    return sum + count * written.look_up();
}

} // namespace

model_size size_of_model(const xercesc::DTDElementDecl &element, document_names &names) {
    using xercesc::ContentSpecNode;
    names.elements.add(element.getFullName());
    std::size_t longest_name = 0;
    model_size size;
    std::size_t places = 0;
    std::unordered_map<std::u16string_view, std::size_t, seeded_name_hash> times;
    std::vector<const ContentSpecNode *> pending{element.getContentSpec()}; // models nest deeply
    while (!pending.empty()) {
        const ContentSpecNode *const node = pending.back();
        pending.pop_back();
        if (!node)
            continue;
        ++size.nodes;
        if (node->getType() == ContentSpecNode::Leaf) {
            ++places;
            const XMLCh *const name = node->getElement()->getRawName();
            ++times[name];
            names.elements.add(name);
            longest_name = std::max(longest_name, xercesc::XMLString::stringLen(name));
        }
        pending.push_back(node->getFirst());
        pending.push_back(node->getSecond());
    }
    names.model = std::max(names.model, price_of_comparing(places, longest_name));
    if (element.getModelType() == xercesc::DTDElementDecl::Children)
        for (const auto &[name, n] : times)
            if (n > 1)
                size.entries += (std::size_t{1} << std::min<std::size_t>(n, 20)) * places;
    return size;
}

std::size_t number_of_values(const xercesc::DTDAttDef &declaration) {
    const XMLCh *const values = declaration.getEnumeration();
    const std::u16string_view text(values ? values : u"");
    return text.empty() ? 0 : 1 + static_cast<std::size_t>(std::count(text.begin(), text.end(), u' '));
}

price price_of_attribute(const xercesc::DTDAttDef &declaration) {
    const price count = number_of_values(declaration);
    return of_characters(declaration.getFullName()) + of_characters(declaration.getValue()) +
           compared_value_price * count * count;
}

price price_of_declared_attributes(const xercesc::XMLElementDecl &element) {
    return element.hasAttDefs() ? declared_attribute_price * element.getAttDefList().getAttDefCount() : 0;
}

price price_of_element(const xercesc::XMLElementDecl &element,
                       const xercesc::RefVectorOf<xercesc::XMLAttr> &attributes, XMLSize_t count,
                       const document_names &names) {
    const price sum = element_price + names.element() + price_of_declared_attributes(element);
    return count == 0 ? sum : sum + price_of_attributes(element, attributes, count, names);
}

std::size_t add_names(hashed_repeated_names &names, const xercesc::XMLElementDecl &element,
                      const xercesc::RefVectorOf<xercesc::XMLAttr> &attributes, XMLSize_t count) {
    for (XMLSize_t i = 0; i < count; ++i)
        names.add(attributes.elementAt(i)->getQName());
    return names.add(element.getFullName());
}

void forget_identifiers(const xercesc::RefVectorOf<xercesc::XMLAttr> &attributes, XMLSize_t count) {
    for (XMLSize_t i = 0; i < count; ++i)
        if (const xercesc::XMLAttr *const attribute = attributes.elementAt(i);
            attribute->getType() == xercesc::XMLAttDef::ID)
            const_cast<xercesc::XMLAttr *>(attribute)->setType(xercesc::XMLAttDef::CData);
}

} // namespace zeb5
