/// The walk over the tree of a camera file: which nodes it takes, what it does with the exceptions of a
/// brittle tree, and with memory that runs out.

#include "support/lane.h"
#include "zeb5_gige_descr.h"

#include <memory>
#include <new>
#include <string>
#include <unordered_set>
#include <vector>

#include <gtest/gtest.h>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/dom/impl/DOMElementImpl.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/RuntimeException.hpp>

#include "support/camera_features.h"
#include "xml_platform.h"

using namespace xercesc;

namespace {

/// A document of the tests' own.
class parsed {
public:
    explicit parsed(const std::string &document) {
        parser_.parse(temporary_file(document).path().c_str());
        if (!parser_.getDocument() || parser_.getErrorCount() != 0)
            throw std::runtime_error("no document: " + document);
    }
    DOMDocument &operator*() { return *parser_.getDocument(); }
    DOMDocument *operator->() { return parser_.getDocument(); }

private:
    XercesDOMParser parser_;
};

class FeatureTree : public testing::Test {
protected:
    /// The features of the nodes, markers and all.
    std::string walk(DOMNodeList *nodes) {
        feature_list list;
        EXPECT_FALSE(dump_nodes(nodes, &list));
        return all_features(list);
    }

    xml_platform platform;
};

TEST_F(FeatureTree, LeavesTheMarkersInTheFields) {
    parsed document("<r><Integer/><Float Name='b'><PvRename/><ToolTip/><Description/></Float>"
                    "<Int64 Name='c'><ToolTip>T</ToolTip></Int64></r>");
    EXPECT_EQ(walk(document->getChildNodes()),
              "1|Unknown|Unknown|Unknown|Unknown\n2|b|Waiting|Waiting|Waiting\n8|c|Unknown|T|Unknown\n");
}

TEST_F(FeatureTree, GoesOnWithTheLastFeatureOfTheVector) {
    feature_list list;
    parsed first("<r><Integer Name='a'/><Float><ToolTip/></Float></r>");
    parsed second("<r Name='b'>text<Description>d</Description></r>");
    EXPECT_FALSE(dump_nodes(first->getChildNodes(), &list));
    EXPECT_FALSE(dump_nodes(second->getChildNodes(), &list));
    EXPECT_EQ(all_features(list), "1|a|Unknown|Unknown|Unknown\n2|b|Unknown|text|d\n");
}

TEST_F(FeatureTree, TakesTheChildrenOfAnyNode) {
    parsed document(
        "<r><Integer Name='a'/><g><Float Name='b'/>x<Int64 Name='c'><ToolTip>T</ToolTip></Int64></g>"
        "<Boolean Name='d'/></r>");
    DOMNode *group = document->getDocumentElement()->getFirstChild()->getNextSibling();
    EXPECT_EQ(walk(group->getChildNodes()), "2|b|Unknown|Unknown|Unknown\n8|c|Unknown|T|Unknown\n");
    EXPECT_EQ(walk(group->getFirstChild()->getChildNodes()), ""); // no children
}

TEST_F(FeatureTree, TakesAListOfNodesThatAreNoSiblings) {
    parsed document("<r><Integer Name='a'><Float Name='b'/></Integer><g><Float Name='c'><ToolTip>T</ToolTip>"
                    "</Float></g><Int64 Name='d'/></r>");
    EXPECT_EQ(walk(document->getElementsByTagName(u"Float")),
              "2|b|Unknown|Unknown|Unknown\n2|c|Unknown|T|Unknown\n");
    // Every node with all that is below it: what stands within another node comes twice
    EXPECT_EQ(walk(document->getElementsByTagName(u"*")),
              "1|a|Unknown|Unknown|Unknown\n2|b|Unknown|Unknown|Unknown\n2|c|Unknown|T|Unknown\n" // r
              "8|d|Unknown|Unknown|Unknown\n"                                                     //
              "1|a|Unknown|Unknown|Unknown\n2|b|Unknown|Unknown|Unknown\n"                        // Integer
              "2|b|Unknown|Unknown|Unknown\n"                                                     // Float
              "2|c|Unknown|T|Unknown\n"                                                           // g
              "2|c|Unknown|T|Unknown\n"         // Float, and its tool tip again for ToolTip
              "8|d|Unknown|Unknown|Unknown\n"); // Int64
}

TEST_F(FeatureTree, RefusesNullArguments) {
    parsed document("<r/>");
    feature_list list;
    const captured seen = capture([&] {
        EXPECT_TRUE(dump_nodes(nullptr, &list));
        EXPECT_TRUE(dump_nodes(document->getChildNodes(), nullptr));
    });
    EXPECT_EQ(seen.out + seen.err, "");
}

TEST_F(FeatureTree, ReadsEveryNameAttributeOfOneElement) {
    // Namespaces allow two attributes whose whole name is Name
    parsed document("<r><Integer/><PvRename Name='a'/></r>");
    auto *rename = static_cast<DOMElement *>(document->getElementsByTagName(u"PvRename")->item(0));
    rename->setAttributeNS(u"urn:x", u"Name", u"b");
    const DOMNamedNodeMap *attributes = rename->getAttributes();
    ASSERT_EQ(attributes->getLength(), 2u);
    const bool a_first = *attributes->item(0)->getNodeValue() == u'a';
    EXPECT_EQ(walk(document->getChildNodes()),
              a_first ? "1|a|b|Unknown|Unknown\n" : "1|b|a|Unknown|Unknown\n");
}

/// A list that throws at its null entries.
class brittle_list : public DOMNodeList {
public:
    explicit brittle_list(std::vector<DOMNode *> nodes, short code = DOMException::HIERARCHY_REQUEST_ERR)
        : nodes_(std::move(nodes)), code_(code) {}
    DOMNode *item(XMLSize_t index) const override {
        if (!nodes_.at(index))
            throw DOMException(code_);
        return nodes_[index];
    }
    XMLSize_t getLength() const override { return nodes_.size(); }

private:
    std::vector<DOMNode *> nodes_;
    short code_;
};

/// An element whose children are a list of the test's own; a null list throws.
class brittle_element : public DOMElementImpl {
public:
    brittle_element(DOMDocument &document, const XMLCh *tag, DOMNodeList *children)
        : DOMElementImpl(&document, tag), children_(children) {}
    DOMNodeList *getChildNodes() const override {
        if (!children_)
            throw DOMException(DOMException::NOT_FOUND_ERR);
        return children_;
    }

private:
    DOMNodeList *children_;
};

/// A list of which not even the length is known.
class endless_list : public brittle_list {
public:
    endless_list() : brittle_list({}) {}
    XMLSize_t getLength() const override { throw DOMException(DOMException::INDEX_SIZE_ERR); }
};

const std::string hierarchy = "Message is:  attempt is made to insert a node where it is not permitted\n";
const std::string not_found =
    "Message is:  attempt is made to reference a node in a context where it does not exist\n";
const std::string index_size = "Message is:  index or size is negative, or greater than the allowed value\n";

/// Nodes and brittle lists of them to build trees from.
class FeatureTreeExceptions : public FeatureTree {
protected:
    struct outcome {
        bool failed;
        std::string out, features;
    };
    static outcome walked(DOMNodeList *nodes) {
        feature_list list;
        outcome seen{};
        seen.out = capture([&] { seen.failed = dump_nodes(nodes, &list); }).out;
        seen.features = all_features(list);
        return seen;
    }
    static outcome walked(std::vector<DOMNode *> nodes) {
        brittle_list list(std::move(nodes));
        return walked(&list);
    }

    parsed document{"<r><Integer/><Float/></r>"};
    DOMNode *integer = document->getElementsByTagName(u"Integer")->item(0);
    DOMNode *floating = document->getElementsByTagName(u"Float")->item(0);
};

const std::string one_integer = "1|Unknown|Unknown|Unknown|Unknown\n";
const std::string one_float = "2|Unknown|Unknown|Unknown|Unknown\n";

TEST_F(FeatureTreeExceptions, StopsAtAnExceptionOfTheListItself) {
    const outcome seen = walked({integer, nullptr, floating});
    EXPECT_TRUE(seen.failed);
    EXPECT_EQ(seen.out, hierarchy);
    EXPECT_EQ(seen.features, one_integer);

    endless_list endless;
    const outcome none = walked(&endless);
    EXPECT_TRUE(none.failed);
    EXPECT_EQ(none.out, index_size);
    EXPECT_EQ(none.features, "");
}

TEST_F(FeatureTreeExceptions, GoesOnAfterAnExceptionWithinTheListBelow) {
    brittle_list inner({floating, nullptr, floating});
    brittle_element element(*document, u"g", &inner);
    const outcome seen = walked({integer, &element, integer});
    EXPECT_FALSE(seen.failed);
    EXPECT_EQ(seen.out, hierarchy);
    EXPECT_EQ(seen.features, one_integer + one_float + one_integer);
}

TEST_F(FeatureTreeExceptions, StopsTheListOfANodeThatDoesNotGiveItsChildren) {
    brittle_element element(*document, u"Int64", nullptr);
    const outcome seen = walked({integer, &element, floating});
    EXPECT_TRUE(seen.failed);
    EXPECT_EQ(seen.out, not_found);
    EXPECT_EQ(seen.features, one_integer + "8|Unknown|Unknown|Unknown|Unknown\n");

    endless_list endless;
    brittle_element uncounted(*document, u"g", &endless);
    const outcome counted = walked({integer, &uncounted, floating});
    EXPECT_TRUE(counted.failed);
    EXPECT_EQ(counted.out, index_size);
    EXPECT_EQ(counted.features, one_integer);
}

TEST_F(FeatureTreeExceptions, StopsEveryLevelThatMeetsAnExceptionByItself) {
    brittle_element broken(*document, u"g", nullptr);
    brittle_list innermost({integer, &broken, integer});
    brittle_element inner(*document, u"g", &innermost);
    brittle_list middle({floating, &inner, floating, nullptr, floating});
    brittle_element outer(*document, u"g", &middle);
    const outcome seen = walked({&outer, integer, nullptr});
    EXPECT_TRUE(seen.failed);
    EXPECT_EQ(seen.out, not_found + hierarchy + hierarchy);
    EXPECT_EQ(seen.features, one_float + one_integer + one_float + one_integer);
}

TEST_F(FeatureTreeExceptions, HasNoWordsForACodeThatTheLibraryDoesNotKnow) {
    brittle_list list({integer, nullptr}, 9999);
    const outcome seen = walked(&list);
    EXPECT_TRUE(seen.failed);
    EXPECT_EQ(seen.out, "");
    EXPECT_EQ(seen.features, one_integer);
}

TEST_F(FeatureTreeExceptions, LetsOtherExceptionsPassAndKeepsWhatWasFound) {
    struct running_out : brittle_list {
        using brittle_list::brittle_list;
        DOMNode *item(XMLSize_t index) const override {
            return index < 2 ? brittle_list::item(index) : throw std::bad_alloc();
        }
    } list({integer, floating, integer});
    feature_list features;
    EXPECT_THROW(dump_nodes(&list, &features), std::bad_alloc);
    EXPECT_EQ(all_features(features), one_integer + one_float);
}

/// Memory of the XML library that runs out after a number of blocks. It takes back what the library itself
/// loses on the way out of a constructor.
class short_memory : public MemoryManager {
public:
    enum complaint { runs_out, breaks, throws_anything };

    ~short_memory() override {
        for (void *block : blocks_)
            ::operator delete(block);
    }

    MemoryManager *getExceptionMemoryManager() override { return this; }
    void *allocate(XMLSize_t size) override {
        if (left_-- == 0)
            complain();
        return *blocks_.insert(::operator new(size)).first;
    }
    void deallocate(void *block) override {
        blocks_.erase(block);
        ::operator delete(block);
    }

    void limit(long blocks, complaint how) {
        left_ = blocks;
        how_ = how;
    }
    void no_limit() { left_ = -1; }
    bool ran_out() const { return left_ < 0; }
    std::size_t blocks() const { return blocks_.size(); }

private:
    void complain() {
        if (how_ == runs_out)
            throw OutOfMemoryException();
        if (how_ == breaks)
            throw RuntimeException("", 0, XMLExcepts::Gen_ParseInProgress, this);
        throw 1;
    }

    long left_ = -1;
    std::unordered_set<void *> blocks_;
    complaint how_ = runs_out;
};

class FeatureTreeMemory : public testing::Test {
protected:
    FeatureTreeMemory() {
        XMLPlatformUtils::Initialize(XMLUni::fgXercescDefaultLocale, nullptr, nullptr, &memory);
    }
    ~FeatureTreeMemory() override { XMLPlatformUtils::Terminate(); }

    const way_in_use way{WITHOUT_LANE}; // the memory is the XML library's
    short_memory memory;
};

TEST_F(FeatureTreeMemory, ThatIsMissingFromTheStartIsToldOfByKind) {
    const struct {
        short_memory::complaint how;
        const char *outcome;
    } cases[] = {
        {short_memory::runs_out, "failed: OutOfMemoryException\n"},
        {short_memory::breaks, "failed: An error occurred during parsing  Message: parsing in progress\n"},
        {short_memory::throws_anything, "failed: An error occurred during parsing\n "},
    };
    for (const auto &c : cases) {
        ZEB5GigEFeature before;
        std::vector<ZEB5GigEFeature *> list = {&before};
        const std::size_t blocks = memory.blocks();
        std::string path = TEST_DATA_DIR "/camera_tarnwick.xml";
        bool failed = false;
        const captured seen = capture([&] {
            memory.limit(0, c.how);
            failed = zeb5_fill_gige_descr(path.data(), &list);
            memory.no_limit();
        });
        EXPECT_EQ((failed ? "failed: " : "read: ") + seen.out, c.outcome);
        EXPECT_EQ(list, std::vector<ZEB5GigEFeature *>{&before});
        EXPECT_EQ(memory.blocks(), blocks);
    }
}

TEST_F(FeatureTreeMemory, ThatRunsOutAnywhereFailsTheReading) {
    const temporary_file file("<r><Integer Name='\xc3\xa4'><ToolTip>\xe2\x82\xac</ToolTip></Integer></r>");
    int failures = 0, in_the_walk = 0; // after which the list has what was found
    for (bool ran_out = true; ran_out;) {
        SCOPED_TRACE(failures);
        ASSERT_LT(failures, 10'000);
        ZEB5GigEFeature before;
        std::vector<ZEB5GigEFeature *> list = {&before};
        std::string path = file.path();
        bool failed = false;
        const captured seen = capture([&] {
            memory.limit(failures, short_memory::runs_out);
            failed = zeb5_fill_gige_descr(path.data(), &list);
            ran_out = memory.ran_out();
            memory.no_limit();
        });
        const bool untouched = list == std::vector<ZEB5GigEFeature *>{&before};
        if (untouched)
            list.clear();
        zeb5_clean_gige_descr(&list);
        EXPECT_TRUE(failed || !untouched);
        ASSERT_EQ(failed, ran_out);
        EXPECT_EQ(seen.out, failed ? "OutOfMemoryException\n" : "");
        failures += failed;
        in_the_walk += failed && !untouched;
        ASSERT_EQ(XMLPlatformUtils::fgMemoryManager, &memory) << "the platform went down";
    }
    EXPECT_GT(failures - in_the_walk, 50);
    EXPECT_GT(in_the_walk, 0);
    EXPECT_EQ(features_of("<r><Integer Name='a'/></r>"), "1|a|||\n");
}

} // namespace
