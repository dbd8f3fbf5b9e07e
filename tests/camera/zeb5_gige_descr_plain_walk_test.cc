/// The camera reader finds what a plain walk finds, which takes every list by its length and its items and
/// leaves every text to the transcoder.

#include "zeb5_gige_descr.h"

#include <iterator>
#include <memory>
#include <random>
#include <string>

#include <gtest/gtest.h>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>

#include "support/camera_features.h"
#include "support/locales.h"
#include "xml_platform.h"

using namespace xercesc;

namespace {

std::string transcoded(const XMLCh *text) {
    char *narrow = XMLString::transcode(text);
    const std::string copy = narrow;
    XMLString::release(&narrow);
    return copy;
}

class plain_walk {
public:
    explicit plain_walk(feature_list &out) : out_(out) {}

    void walk(const DOMNodeList &nodes) {
        for (XMLSize_t i = 0; i < nodes.getLength(); ++i) {
            const DOMNode &node = *nodes.item(i);
            if (node.getNodeType() == DOMNode::ELEMENT_NODE)
                element(node);
            else if (node.getNodeType() == DOMNode::TEXT_NODE)
                text(transcoded(node.getNodeValue()));
            walk(*node.getChildNodes());
        }
    }

private:
    void element(const DOMNode &node) {
        const std::string tag = transcoded(node.getNodeName());
        int kind = 0;
        while (kind < FEATURE_TYPE_MAX && tag != FeatureTags[kind])
            ++kind;
        if (kind < FEATURE_TYPE_MAX) {
            out_.push_back(new ZEB5GigEFeature);
            out_.back()->type = kind;
            out_.back()->name = out_.back()->extension = out_.back()->tooltip = out_.back()->description =
                "Unknown";
        }
        if (out_.empty())
            return;
        ZEB5GigEFeature &feature = *out_.back();
        if (tag == "PvRename")
            feature.extension = "Waiting";
        if (tag == "ToolTip")
            feature.tooltip = "Waiting";
        if (tag == "Description")
            feature.description = "Waiting";
        for (XMLSize_t i = 0; i < node.getAttributes()->getLength(); ++i)
            if (const DOMNode &attribute = *node.getAttributes()->item(i);
                transcoded(attribute.getNodeName()) == "Name")
                name(feature, transcoded(attribute.getNodeValue()));
    }

    static void name(ZEB5GigEFeature &feature, const std::string &value) {
        if (feature.name == "Unknown")
            feature.name = value;
        else if (feature.extension == "Waiting")
            feature.extension = value;
    }

    void text(const std::string &value) {
        if (out_.empty())
            return;
        ZEB5GigEFeature &feature = *out_.back();
        for (std::string *field : {&feature.extension, &feature.tooltip, &feature.description})
            if (*field == "Waiting") {
                *field = value;
                return;
            }
    }

    feature_list &out_;
};

/// A random document, of elements, texts and all that can stand between them.
class random_document {
public:
    explicit random_document(std::mt19937 &random) : random_(random) {}

    std::string text() {
        return "<!DOCTYPE r [<!ENTITY e 'entity'><!ENTITY f '<ToolTip/>&e;<Float Name=\"&e;\"/>'>"
               "<?pi in the subset?>]><!-- before --><r>" +
               content(0) + "</r>";
    }

private:
    template <std::size_t Size> const char *any(const char *const (&choices)[Size]) {
        return choices[random_() % Size];
    }

    std::string content(int depth) {
        static constexpr const char *pieces[] = {
            " ",
            "\n  ",
            "text",
            "Waiting",
            "Unknown",
            "\xc3\xa4 \xe2\x82\xac \xf0\x9d\x84\x9e",
            "&e;",
            "&f;",
            "a&amp;b",
            "&#65;",
            "<?pi?>",
            "<!-- comment -->",
            "ab\xc2\xb0",
            "<![CDATA[cd]]>",
            "a long text that goes on and on, farther than any eight characters"};
        std::string all;
        for (std::size_t left = random_() % 6; left > 0; --left)
            all += random_() % 2 && depth < 6 ? element(depth) : any(pieces);
        return all;
    }

    std::string element(int depth) {
        static constexpr const char *tags[] = {"Integer",     "Float",     "Undefined", "Int64",
                                               "IntReg",      "Extension", "ToolTip",   "PvRename",
                                               "Description", "integer",   "Group",     "\xc3\xa4"};
        static constexpr const char *attributes[] = {"",
                                                     "",
                                                     " Name='n'",
                                                     " Name=''",
                                                     " Name='Unknown'",
                                                     " Name='Waiting'",
                                                     " name='x'",
                                                     " Other='o' Name='\xc3\xbc' Zoom='z'"};
        const std::string tag = any(tags);
        const std::string inside = content(depth + 1);
        return '<' + tag + any(attributes) + (inside.empty() ? "/>" : '>' + inside + "</" + tag + '>');
    }

    std::mt19937 &random_;
};

void mutate(std::string &text, std::mt19937 &random) {
    static constexpr char slips[] = "<>&;/'\" aT\xc3\xa4";
    text[random() % text.size()] = slips[random() % (sizeof slips - 1)];
}

/// What a plain walk finds, or the failure of a document that cannot be read.
std::string plain_features(const std::string &document) {
    XercesDOMParser parser;
    parser.setCreateEntityReferenceNodes(false);
    parser.parse(
        MemBufInputSource(reinterpret_cast<const XMLByte *>(document.data()), document.size(), "plain"));
    if (parser.getErrorCount() != 0)
        return parse_failure;
    feature_list list;
    plain_walk(list).walk(*parser.getDocument()->getChildNodes());
    for (ZEB5GigEFeature *feature : list)
        for (std::string *field :
             {&feature->name, &feature->extension, &feature->tooltip, &feature->description})
            if (*field == "Unknown" || *field == "Waiting")
                field->clear();
    return all_features(list);
}

class Zeb5GigeDescrPlainWalk : public InEachLocale {
    xml_platform platform_;
};
INSTANTIATE_TEST_SUITE_P(Locale, Zeb5GigeDescrPlainWalk, testing::ValuesIn(locales), locale_in_name);

TEST_P(Zeb5GigeDescrPlainWalk, FindsTheSame) {
    std::mt19937 random(20240518);
    std::size_t found = 0, failed = 0;
    for (int left = 1'500; left > 0; --left) {
        std::string document = random_document(random).text();
        if (left % 3 == 0)
            mutate(document, random);
        const std::string wanted = plain_features(document);
        ASSERT_EQ(features_of(document), wanted) << document;
        failed += wanted == parse_failure;
        found += wanted != parse_failure && !wanted.empty();
    }
    EXPECT_GT(found, 500U); // the documents do get somewhere
    EXPECT_GT(failed, 50U);
}

TEST_P(Zeb5GigeDescrPlainWalk, FindsTheSameInEveryKindOfList) {
    std::mt19937 random(20240519);
    for (int left = 500; left > 0; --left) {
        const std::string document = random_document(random).text();
        XercesDOMParser parser; // keeps references to entities as nodes
        parser.parse(
            MemBufInputSource(reinterpret_cast<const XMLByte *>(document.data()), document.size(), "plain"));
        ASSERT_EQ(parser.getErrorCount(), 0U) << document;
        DOMDocument &tree = *parser.getDocument();
        for (DOMNodeList *nodes :
             {tree.getChildNodes(), tree.getElementsByTagName(u"*"), tree.getElementsByTagName(u"ToolTip"),
              tree.getFirstChild()->getChildNodes(), tree.getDocumentElement()->getChildNodes()}) {
            feature_list list, plain;
            EXPECT_FALSE(dump_nodes(nodes, &list));
            plain_walk(plain).walk(*nodes);
            ASSERT_EQ(all_features(list), all_features(plain)) << document;
        }
    }
}

} // namespace
