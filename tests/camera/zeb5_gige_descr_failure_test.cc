/// A platform that does not come up for the camera reader, and a tree that cannot be walked. Initialize() and
/// getTagName() are this program's own here, as the real ones cannot be made to refuse. That is why these
/// tests are a program of their own.

#include "zeb5_gige_descr.h"

#include <cstdlib>
#include <dlfcn.h>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <xercesc/dom/DOMException.hpp>
#include <xercesc/dom/impl/DOMElementImpl.hpp>
#include <xercesc/internal/MemoryManagerImpl.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/RuntimeException.hpp>
#include <xercesc/util/XMLString.hpp>

#include "support/camera_features.h"
#include "xml_platform.h"

namespace {
std::optional<xercesc::RuntimeException> refusal;
const XMLCh *refused_tag = nullptr;
} // namespace

XERCES_CPP_NAMESPACE_BEGIN

void XMLPlatformUtils::Initialize(const char *const locale, const char *const nls_home,
                                  PanicHandler *const panic_handler, MemoryManager *const memory_manager) {
    if (refusal)
        throw *refusal;
    void (*own)(const char *, const char *, PanicHandler *, MemoryManager *) = Initialize;
    Dl_info info{};
    if (!dladdr(reinterpret_cast<void *>(own), &info) || !info.dli_sname)
        abort();
    reinterpret_cast<decltype(own)>(dlsym(RTLD_NEXT, info.dli_sname))(locale, nls_home, panic_handler,
                                                                      memory_manager);
}

const XMLCh *DOMElementImpl::getTagName() const {
    if (refused_tag && XMLString::equals(fName, refused_tag))
        throw DOMException(DOMException::NOT_FOUND_ERR);
    return fName;
}

XERCES_CPP_NAMESPACE_END

namespace {

const std::string camera = TEST_DATA_DIR "/camera_tarnwick.xml";

void expect_refusal() {
    ZEB5GigEFeature before;
    std::vector<ZEB5GigEFeature *> list = {&before};
    std::string path = camera;
    bool failed = false;
    const captured seen = capture([&] { failed = zeb5_fill_gige_descr(path.data(), &list); });
    EXPECT_TRUE(failed);
    EXPECT_EQ(seen.out, "Error during Xerces-c Initialization.  Exception message: parsing in progress\n");
    EXPECT_EQ(seen.err, "");
    EXPECT_EQ(list, std::vector<ZEB5GigEFeature *>{&before});
}

TEST(Zeb5GigeDescrFailure, TellsOfAPlatformThatDoesNotComeUp) {
    xercesc::MemoryManagerImpl memory; // the exception's own, as the platform has none while it is down
    {
        const xml_platform up; // texts of exceptions come from it
        refusal.emplace("", 0, xercesc::XMLExcepts::Gen_ParseInProgress, &memory);
        expect_refusal();
        EXPECT_NE(xercesc::XMLPlatformUtils::fgMemoryManager, nullptr)
            << "what was not taken is not given back";
    }
    EXPECT_EQ(xercesc::XMLPlatformUtils::fgMemoryManager, nullptr);
    EXPECT_EQ(xercesc::XMLPlatformUtils::fgTransService, nullptr);
    expect_refusal();
    refusal.reset();
    feature_list later;
    EXPECT_EQ(fill(camera, later), "read");
    EXPECT_EQ(later.size(), 5u);
}

TEST(Zeb5GigeDescrFailure, ThatCannotBeWalkedToItsEndIsReadUpToThere) {
    const temporary_file file(
        "<!DOCTYPE r>" // so that there is a tree
        "<r><Integer Name='a'><ToolTip/></Integer><Float Name='b'/><Int64 Name='c'/></r>");
    const struct {
        const XMLCh *tag;
        const char *features;
    } rows[] = {
        {u"r", ""},             // the walk itself fails, the reading does not
        {u"Float", "1|a|||\n"}, // without its markers
        {u"Int64", "1|a|||\n2|b|||\n"},
    };
    for (const auto &row : rows) {
        feature_list list;
        refused_tag = row.tag;
        const std::string outcome = fill(file.path(), list);
        refused_tag = nullptr;
        EXPECT_EQ(outcome,
                  "read: Message is:  attempt is made to reference a node in a context where it does "
                  "not exist\n");
        EXPECT_EQ(all_features(list), row.features);
    }
}

} // namespace
