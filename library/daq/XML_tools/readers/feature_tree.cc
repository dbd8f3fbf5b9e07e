#include "readers/feature_tree.h"

#include <cstdio>
#include <typeinfo>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/dom/impl/DOMNodeListImpl.hpp>

#include "readers/feature_collector.h"
#include "steps/narrow_text.h"

namespace zeb5 {

namespace {

using namespace xercesc;

bool equal(const XMLCh *text, const char *name) {
    for (; *name; ++text, ++name)
        if (*text != static_cast<unsigned char>(*name))
            return false;
    return *text == 0;
}

/// Hands the nodes of a tree to the collector.
class node_collector {
public:
    explicit node_collector(std::vector<ZEB5GigEFeature *> &out) : collector_(out) { forget_local_code(); }

    void take(const DOMNode &node) {
        if (node.getNodeType() == DOMNode::ELEMENT_NODE)
            take_element(static_cast<const DOMElement &>(node));
        else if (node.getNodeType() == DOMNode::TEXT_NODE)
            set(collector_.field_for_text(), node.getNodeValue());
    }

private:
    void take_element(const DOMElement &element) {
        const XMLCh *const tag = element.getTagName();
        collector_.take_element(find_feature_element([tag](const char *known) { return equal(tag, known); }));
        if (!collector_.field_for_name())
            return;
        const DOMNamedNodeMap *attributes = element.getAttributes();
        const XMLSize_t count = attributes ? attributes->getLength() : 0;
        for (XMLSize_t i = 0; i < count; ++i) {
            const auto &attribute = static_cast<const DOMAttr &>(*attributes->item(i));
            if (equal(attribute.getName(), Attributes[ATTRIBUTE_NAME]))
                set(collector_.field_for_name(), attribute.getValue());
        }
    }

    void set(std::string *field, const XMLCh *text) {
        if (!field || !text)
            return;
        if (const auto narrow = narrower_.narrow(text, XMLString::stringLen(text)))
            *field = *narrow;
    }

    feature_collector collector_;
    narrower narrower_;
};

/// A list of nodes and the walk's place in it.
class node_level {
public:
    explicit node_level(DOMNode *first) : node_(first) {}
    node_level(DOMNodeList &nodes, XMLSize_t count) : nodes_(&nodes), count_(count) {}

    /// The next node, or null at the end.
    DOMNode *next() {
        if (nodes_)
            return index_ < count_ ? nodes_->item(index_++) : nullptr;
        if (index_++ != 0)
            node_ = node_->getNextSibling();
        return node_;
    }

private:
    DOMNode *node_ = nullptr;
    DOMNodeList *nodes_ = nullptr; // null: the first node and its siblings
    XMLSize_t count_ = 0;
    XMLSize_t index_ = 0;
};

/// Walks depth first, with a stack of its own: documents may be nested deeper than the thread's stack allows.
class tree_walk {
public:
    explicit tree_walk(std::vector<ZEB5GigEFeature *> &out) : collector_(out) {}

    /// Returns whether a DOM exception ended the walk of `nodes` itself. An exception below ends only the
    /// walk of the list in which it occurred.
    bool walk(DOMNodeList *nodes) {
        bool stopped = go([&] { descend(nodes); });
        while (!levels_.empty()) {
            stopped = go([&] { step(); });
            if (stopped)
                levels_.pop_back();
        }
        return stopped;
    }

private:
    /// Returns whether `action` threw a DOM exception, which is reported.
    template <class Action> static bool go(Action action) {
        try {
            action();
            return false;
        } catch (const DOMException &problem) {
            if (const auto message = message_of(problem))
                // Kept: log scanners tell this line by its two blanks from the one of a parse, which has one
                std::printf("Message is:  %s\n", message->c_str());
            return true;
        }
    }

    void step() {
        if (const DOMNode *node = levels_.back().next()) {
            collector_.take(*node);
            if (node->getNodeType() != DOMNode::TEXT_NODE) // most nodes are texts, which have no children
                descend(node->getChildNodes());
        } else
            levels_.pop_back();
    }

    void descend(DOMNodeList *nodes) {
        // The children of a node are a list of this class, which counts from the first child at every call.
        // That would take 13 % of the instructions of reading a file
        if (typeid(*nodes) == typeid(DOMNodeListImpl)) {
            if (DOMNode *const first = nodes->item(0))
                levels_.emplace_back(first);
        } else if (const XMLSize_t count = nodes->getLength())
            levels_.emplace_back(*nodes, count);
    }

    node_collector collector_;
    std::vector<node_level> levels_; // the innermost last
};

} // namespace

/// The XML library's text for the exception's code, where it has one.
std::optional<std::string> message_of(const xercesc::DOMException &problem) {
    constexpr XMLSize_t most = 2047;
    XMLCh message[most + 1];
    if (!xercesc::DOMImplementation::loadDOMExceptionMsg(problem.code, message, most))
        return std::nullopt;
    const transcoded text = transcode(message);
    return text ? std::optional<std::string>(text.get()) : std::nullopt;
}

} // namespace zeb5

bool dump_nodes(xercesc::DOMNodeList *nodes, std::vector<ZEB5GigEFeature *> *out) {
    if (!nodes || !out)
        return true;
    return zeb5::tree_walk(*out).walk(nodes);
}
