#include "zeb5_gige_descr.h"

#include <cstdio>
#include <memory>
#include <optional>
#include <string_view>
#include <typeinfo>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/dom/impl/DOMNodeListImpl.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/XMLException.hpp>

#include "narrow_text.h"
#include "xml_hardening.h"
#include "xml_platform.h"

namespace {

using namespace xercesc;

using feature_vector = std::vector<ZEB5GigEFeature *>;

// Kept: the two markers are plain texts of the fields, and users of dump_nodes() see them. A file that says
// one of them itself is read as if that text were still missing.
constexpr std::string_view unknown = "Unknown"; // not yet given
constexpr std::string_view waiting = "Waiting"; // expected from the next text or Name

/// The field that each of MoreTags makes wait; text goes to the first that waits, in this order.
constexpr std::string ZEB5GigEFeature::*waiting_fields[MORE_TAGS_MAX] = {
    nullptr, // Kept: readers of the records see no trace of an Extension
    &ZEB5GigEFeature::extension,
    &ZEB5GigEFeature::tooltip,
    &ZEB5GigEFeature::description,
};

bool equal(const XMLCh *text, const char *name) {
    for (; *name; ++text, ++name)
        if (*text != static_cast<unsigned char>(*name))
            return false;
    return *text == 0;
}

/// Index of the entry that is exactly `text`; `Size` for none.
template <int Size> int index_in(const char *const (&names)[Size], const XMLCh *text) {
    int i = 0;
    while (i < Size && !equal(text, names[i]))
        ++i;
    return i;
}

std::string message_of(const XMLException &problem) {
    const zeb5::transcoded text = zeb5::transcode(problem.getMessage());
    return text ? text.get() : "";
}

/// The XML library's text for the exception's code, where it has one.
std::optional<std::string> message_of(const DOMException &problem) {
    constexpr XMLSize_t most = 2047;
    XMLCh message[most + 1];
    if (!DOMImplementation::loadDOMExceptionMsg(problem.code, message, most))
        return std::nullopt;
    const zeb5::transcoded text = zeb5::transcode(message);
    return text ? std::optional<std::string>(text.get()) : std::nullopt;
}

/// What the nodes of a document say about features, one node after the other.
class feature_collector {
public:
    explicit feature_collector(feature_vector &out)
        : out_(out), current_(out.empty() ? nullptr : out.back()) {}

    void take(const DOMNode &node) {
        if (node.getNodeType() == DOMNode::ELEMENT_NODE)
            take_element(static_cast<const DOMElement &>(node));
        else if (node.getNodeType() == DOMNode::TEXT_NODE)
            take_text(node.getNodeValue());
    }

private:
    void take_element(const DOMElement &element) {
        const XMLCh *tag = element.getTagName();
        if (const int type = index_in(FeatureTags, tag); type < FEATURE_TYPE_MAX)
            begin(type);
        else if (const int more = index_in(MoreTags, tag); current_ && more < MORE_TAGS_MAX)
            if (const auto field = waiting_fields[more])
                current_->*field = waiting;
        if (current_)
            take_attributes(element);
    }

    void begin(int type) {
        auto feature = std::make_unique<ZEB5GigEFeature>();
        feature->type = type;
        feature->name = feature->extension = feature->tooltip = feature->description = unknown;
        out_.push_back(feature.get());
        current_ = feature.release();
    }

    /// Kept: the Name of any element counts. That of a PvRename is the alternative name, but a feature
    /// without a Name of its own is seen under the next one in the file.
    void take_attributes(const DOMElement &element) {
        const DOMNamedNodeMap *attributes = element.getAttributes();
        const XMLSize_t count = attributes ? attributes->getLength() : 0;
        for (XMLSize_t i = 0; i < count; ++i) {
            const auto &attribute = static_cast<const DOMAttr &>(*attributes->item(i));
            if (!equal(attribute.getName(), Attributes[ATTRIBUTE_NAME]))
                continue;
            if (current_->name == unknown)
                set(current_->name, attribute.getValue());
            else if (current_->extension == waiting)
                set(current_->extension, attribute.getValue());
        }
    }

    /// Kept: text goes where text is awaited, wherever it stands: after an empty ToolTip the white space
    /// behind it is seen as the tool tip.
    void take_text(const XMLCh *text) {
        if (!text || !current_)
            return;
        for (const auto field : waiting_fields)
            if (field && current_->*field == waiting)
                return set(current_->*field, text);
    }

    void set(std::string &field, const XMLCh *text) {
        if (const auto narrow = narrower_.narrow(text, XMLString::stringLen(text)))
            field = *narrow;
    }

    feature_vector &out_;
    ZEB5GigEFeature *current_; // the last of `out_`
    zeb5::narrower narrower_;
};

/// One list of nodes and how far the walk has come in it.
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

/// Depth first, on a stack of its own: documents may be nested deeper than the thread's stack allows.
class tree_walk {
public:
    explicit tree_walk(feature_vector &out) : collector_(out) {}

    /// Whether a DOM exception ended the walk of `nodes` themselves. One below them ends the walk of the list
    /// that it met.
    bool failed(DOMNodeList *nodes) {
        bool stopped = go([&] { descend(nodes); });
        while (!levels_.empty()) {
            stopped = go([&] { step(); });
            if (stopped)
                levels_.pop_back();
        }
        return stopped;
    }

private:
    /// Whether `action` met a DOM exception, which is reported.
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
        // The children of a node are a list of this class: it counts from the first at every call, which
        // would be 13 % of the instructions of reading a file
        if (typeid(*nodes) == typeid(DOMNodeListImpl)) {
            if (DOMNode *const first = nodes->item(0))
                levels_.emplace_back(first);
        } else if (const XMLSize_t count = nodes->getLength())
            levels_.emplace_back(*nodes, count);
    }

    feature_collector collector_;
    std::vector<node_level> levels_; // the innermost last
};

/// Sees what the parser by itself drops without a word. A warning is no error: the document was read.
class error_watch : public ErrorHandler {
public:
    bool seen() const { return seen_; }

    void warning(const SAXParseException &) override {}
    void error(const SAXParseException &) override { seen_ = true; }
    void fatalError(const SAXParseException &) override { seen_ = true; }
    void resetErrors() override { seen_ = false; }

private:
    bool seen_ = false;
};

struct unreadable_file {};

/// A parser that holds the whole document, or null after a message.
std::unique_ptr<XercesDOMParser> parse_file(const char *file_name) {
    error_watch errors; // outlives the parse, not the parser: only a parse reports
    try {
        auto parser = zeb5::create_parser<XercesDOMParser>(XercesDOMParser::Val_Never);
        parser->setErrorHandler(&errors);
        parser->setCreateEntityReferenceNodes(false);
        if (const auto source = parser->files.source_of(file_name))
            parser->parse(*source);
        else
            parser->parse(file_name);
        parser->setErrorHandler(nullptr);
        if (errors.seen() || !parser->getDocument())
            throw unreadable_file{};
        return parser;
    } catch (const OutOfMemoryException &) {
        std::printf("OutOfMemoryException\n");
    } catch (const XMLException &problem) {
        std::printf("An error occurred during parsing  Message: %s\n", message_of(problem).c_str());
    } catch (const DOMException &problem) {
        std::printf("\nDOM Error during parsing: '%s' DOMException code is: %d\n", file_name, problem.code);
        if (const auto message = message_of(problem))
            std::printf("Message is: %s", message->c_str()); // Kept: no line end, as in older logs
    } catch (...) {
        std::printf("An error occurred during parsing\n "); // Kept: a blank before the log's next line
    }
    return nullptr;
}

void clear_markers(ZEB5GigEFeature &feature) {
    for (std::string *field : {&feature.name, &feature.extension, &feature.tooltip, &feature.description})
        if (*field == unknown || *field == waiting)
            field->clear();
}

} // namespace

ZEB5GigEFeature::ZEB5GigEFeature() : type(FEATURE_TYPE_UNDEF) {}

ZEB5GigEFeature::~ZEB5GigEFeature() = default;

bool zeb5_fill_gige_descr(char *file_name, feature_vector *out) {
    if (!file_name || !out)
        return true;
    std::optional<xml_platform> platform;
    try {
        platform.emplace();
    } catch (const XMLException &problem) {
        std::printf("Error during Xerces-c Initialization.  Exception message: %s\n",
                    zeb5::plain_message(problem).c_str());
        return true;
    }
    const auto parser = parse_file(file_name);
    if (!parser)
        return true;
    out->clear(); // Kept: the records are the caller's, who may still use them
    // Kept: callers see no failure of the walk; what was found before a DOM exception stays
    (void)dump_nodes(parser->getDocument()->getChildNodes(), out);
    for (ZEB5GigEFeature *feature : *out)
        clear_markers(*feature);
    return false;
}

bool dump_nodes(DOMNodeList *nodes, feature_vector *out) {
    if (!nodes || !out)
        return true;
    return tree_walk(*out).failed(nodes);
}

void zeb5_dump_gige_descr(const feature_vector *out) {
    if (!out)
        return;
    const int count = static_cast<int>(out->size());
    for (int number = 0; number < count; ++number) {
        const ZEB5GigEFeature *feature = (*out)[static_cast<std::size_t>(number)];
        // Kept: features without a name count too, as the numbers are places in the vector
        if (!feature || feature->name.empty())
            continue;
        if (feature->extension.empty())
            std::printf("[%d] Name:'%s' type:%d ToolTip:'%s' Description:'%s'\n", number,
                        feature->name.c_str(), feature->type, feature->tooltip.c_str(),
                        feature->description.c_str());
        else
            std::printf("[%d] Name:'%s' Extension:'%s' type:%d ToolTip:'%s' Description:'%s'\n", number,
                        feature->name.c_str(), feature->extension.c_str(), feature->type,
                        feature->tooltip.c_str(), feature->description.c_str());
    }
}

void zeb5_clean_gige_descr(feature_vector *out) {
    if (!out)
        return;
    for (const ZEB5GigEFeature *feature : *out)
        delete feature;
    out->clear();
}
