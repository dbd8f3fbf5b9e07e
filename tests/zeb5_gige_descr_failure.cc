/// A platform that does not come up for the camera reader. Initialize() is this program's own here, as the
/// real one cannot be made to refuse. That is why this test is a program of its own.

#include "zeb5_gige_descr.h"

#include <cstdlib>
#include <dlfcn.h>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/RuntimeException.hpp>

#include "camera_features.h"
#include "xml_platform.h"

namespace {
bool refusing = false;
}

XERCES_CPP_NAMESPACE_BEGIN

void XMLPlatformUtils::Initialize(const char *const locale, const char *const nls_home,
                                  PanicHandler *const panic_handler, MemoryManager *const memory_manager) {
    if (refusing)
        throw RuntimeException("", 0, XMLExcepts::Gen_ParseInProgress, fgMemoryManager);
    void (*own)(const char *, const char *, PanicHandler *, MemoryManager *) = Initialize;
    Dl_info info{};
    if (!dladdr(reinterpret_cast<void *>(own), &info) || !info.dli_sname)
        abort();
    reinterpret_cast<decltype(own)>(dlsym(RTLD_NEXT, info.dli_sname))(locale, nls_home, panic_handler,
                                                                      memory_manager);
}

XERCES_CPP_NAMESPACE_END

namespace {

TEST(CameraFile, TellsOfAPlatformThatDoesNotComeUp) {
    ZEB5GigEFeature before;
    std::vector<ZEB5GigEFeature *> list = {&before};
    {
        const xml_platform up; // the exception's message needs it
        char path[] = TEST_DATA_DIR "/camera_tarnwick.xml";
        bool failed = false;
        refusing = true;
        const captured seen = capture([&] { failed = zeb5_fill_gige_descr(path, &list); });
        refusing = false;
        EXPECT_TRUE(failed);
        EXPECT_EQ(seen.out,
                  "Error during Xerces-c Initialization.  Exception message: parsing in progress\n");
        EXPECT_EQ(seen.err, "");
        EXPECT_EQ(list, std::vector<ZEB5GigEFeature *>{&before});
        EXPECT_NE(xercesc::XMLPlatformUtils::fgMemoryManager, nullptr)
            << "what was not taken is not given back";
    }
    feature_list later;
    EXPECT_EQ(fill(TEST_DATA_DIR "/camera_tarnwick.xml", later), "read");
    EXPECT_EQ(later.size(), 5u);
}

} // namespace
