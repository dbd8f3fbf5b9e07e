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

/// 0 for a null text.
price of_characters(const XMLCh *text) { return character_price * xercesc::XMLString::stringLen(text); }

} // namespace

model_size size_of_model(const xercesc::DTDElementDecl &element) {
    using xercesc::ContentSpecNode;
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
            ++times[node->getElement()->getRawName()];
        }
        pending.push_back(node->getFirst());
        pending.push_back(node->getSecond());
    }
    if (element.getModelType() == xercesc::DTDElementDecl::Children)
        for (const auto &[name, n] : times)
            if (n > 1)
                size.entries += (std::size_t{1} << std::min<std::size_t>(n, 20)) * places;
    return size;
}

price price_of_attribute(const xercesc::DTDAttDef &declaration) {
    const XMLCh *const values = declaration.getEnumeration();
    const std::u16string_view text(values ? values : u"");
    const auto count = static_cast<price>(std::count(text.begin(), text.end(), u' '));
    return of_characters(declaration.getFullName()) + of_characters(declaration.getValue()) +
           compared_value_price * count * count;
}

price price_of_declared_attributes(const xercesc::XMLElementDecl &element) {
    return element.hasAttDefs() ? declared_attribute_price * element.getAttDefList().getAttDefCount() : 0;
}

price price_of_element(const xercesc::XMLElementDecl &element,
                       const xercesc::RefVectorOf<xercesc::XMLAttr> &attributes, XMLSize_t count) {
    price sum = element_price + price_of_declared_attributes(element);
    for (XMLSize_t i = 0; i < count; ++i)
        sum += attribute_price + of_characters(attributes.elementAt(i)->getQName()) +
               of_characters(attributes.elementAt(i)->getValue());
    return sum;
}

std::size_t attribute_names::add(const xercesc::RefVectorOf<xercesc::XMLAttr> &attributes, XMLSize_t count) {
    for (XMLSize_t i = 0; i < count; ++i)
        if (const XMLCh *const name = attributes.elementAt(i)->getQName(); last_ != name)
            names_.insert(last_ = name); // most elements of a file have one attribute, and the same
    return names_.size();
}

void forget_identifiers(const xercesc::RefVectorOf<xercesc::XMLAttr> &attributes, XMLSize_t count) {
    for (XMLSize_t i = 0; i < count; ++i)
        if (const xercesc::XMLAttr *const attribute = attributes.elementAt(i);
            attribute->getType() == xercesc::XMLAttDef::ID)
            const_cast<xercesc::XMLAttr *>(attribute)->setType(xercesc::XMLAttDef::CData);
}

} // namespace zeb5
