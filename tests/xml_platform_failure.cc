/// A platform that does not come up. Initialize() and Terminate() are this program's own here: they count and
/// pass on, or refuse, which the real ones cannot be made to do. That is why these tests are a program of
/// their own.

#include "xml_platform.h"

#include <cstdlib>
#include <dlfcn.h>
#include <new>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/RuntimeException.hpp>

#include "SAX_File_Parser.h"
#include "SAX_Memory_Parser.h"
#include "capture.h"
#include "sax_sources.h"

namespace {

int initialized = 0; // calls that were passed on
int terminated = 0;
enum { passing_on, refusing, out_of_memory, breaking } platform = passing_on;

/// The function of the same name in the library that this program stands in for.
template <class Function> Function *real(Function *own) {
    Dl_info info{};
    if (!dladdr(reinterpret_cast<void *>(own), &info) || !info.dli_sname)
        abort();
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, info.dli_sname));
}

} // namespace

XERCES_CPP_NAMESPACE_BEGIN

void XMLPlatformUtils::Initialize(const char *const locale, const char *const nls_home,
                                  PanicHandler *const panic_handler, MemoryManager *const memory_manager) {
    if (platform == refusing)
        throw RuntimeException("", 0, XMLExcepts::Gen_ParseInProgress, fgMemoryManager);
    if (platform == out_of_memory)
        throw std::bad_alloc();
    if (platform == breaking)
        throw OutOfMemoryException();
    ++initialized;
    real<void(const char *, const char *, PanicHandler *, MemoryManager *)>(Initialize)(
        locale, nls_home, panic_handler, memory_manager);
}

void XMLPlatformUtils::Terminate() {
    ++terminated;
    real(Terminate)();
}

XERCES_CPP_NAMESPACE_END

namespace {

/// The platform is up, as the message of an exception needs it, and refuses whoever wants it too.
class RefusingPlatform : public testing::Test {
protected:
    RefusingPlatform() {
        initialized = terminated = 0;
        platform = refusing;
    }
    ~RefusingPlatform() override { platform = passing_on; }

    xml_platform up;
};

const char refusal[] = "Error during initialization! Message:\nparsing in progress\n";

TEST_F(RefusingPlatform, MakesReadersThatAreNotReady) {
    char text[] = "<r/>", path[] = "/dev/null", name[] = "n";
    const captured streams = capture([&] {
        SAX_Memory_Parser memory(text);
        EXPECT_FALSE(memory.init_ok());
        EXPECT_EQ(memory.start(), 1);
        EXPECT_EQ(step(memory), "-1");
        EXPECT_EQ(memory.get_error_counter(), 0);
        char *value = text;
        EXPECT_EQ(memory.get_attr(name, &value), -1);
        EXPECT_EQ(value, nullptr);

        SAX_File_Parser file;
        EXPECT_FALSE(file.init_ok());
        EXPECT_EQ(file.start(path), 1);
        EXPECT_EQ(step(file), "-1");
        EXPECT_EQ(file.get_error_counter(), 0);
        value = text;
        EXPECT_EQ(file.get_attr(name, &value), -1);
        EXPECT_EQ(value, nullptr);
    });
    EXPECT_EQ(streams.err, std::string(refusal) + refusal);
    EXPECT_EQ(streams.out, "");
    EXPECT_EQ(initialized, 0);
    EXPECT_EQ(terminated, 0) << "what was not taken is not given back";
}

TEST_F(RefusingPlatform, IsNotAskedForANullText) {
    const captured streams = capture([] { EXPECT_FALSE(SAX_Memory_Parser(nullptr).init_ok()); });
    EXPECT_EQ(streams.err, "");
}

TEST_F(RefusingPlatform, ServesTheNextReaderOnceItComesUp) {
    char text[] = "<r>x</r>";
    capture([&] { EXPECT_FALSE(SAX_Memory_Parser(text).init_ok()); });
    platform = passing_on;
    {
        SAX_Memory_Parser parser(text);
        EXPECT_TRUE(parser.init_ok());
        EXPECT_EQ(parser.start(), 0);
        EXPECT_EQ(steps(parser), "r r[x] ~ ~ -1");
    }
    EXPECT_EQ(initialized, 1);
    EXPECT_EQ(terminated, 1);
}

TEST_F(RefusingPlatform, ThrowsItsOwnExceptionsThroughAHolder) {
    EXPECT_THROW(xml_platform(), xercesc::XMLException);
    platform = out_of_memory;
    EXPECT_THROW(xml_platform(), std::bad_alloc);
    EXPECT_EQ(terminated, 0);
    platform = passing_on;
    EXPECT_NO_THROW(xml_platform()); // and no lock is left behind
    EXPECT_EQ(initialized, 1);
    EXPECT_EQ(terminated, 1);
}

// Xerces is then half up for good: who used it crashed. In a process of its own, as that one is lost.
TEST(BrokenPlatform, IsNotTriedAgain) {
    const auto try_twice = [] {
        platform = breaking;
        char text[] = "<r/>";
        for (int i = 0; i < 2; ++i) {
            try {
                SAX_Memory_Parser parser(text);
                _exit(1);
            } catch (const xercesc::OutOfMemoryException &) {
                platform = passing_on;
            }
        }
        _exit(initialized == 0 && terminated == 0 ? 0 : 2);
    };
    initialized = terminated = 0;
    EXPECT_EXIT(try_twice(), testing::ExitedWithCode(0), "");
}

TEST(CountedPlatform, IsTakenOnceAndGivenBackOnceByEveryReader) {
    initialized = terminated = 0;
    char text[] = "<r>x</r>", cut[] = "<r>", path[] = "/nowhere/none.xml";
    {
        SAX_Memory_Parser good(text);
        EXPECT_EQ(good.start(), 0);
        EXPECT_EQ(steps(good), "r r[x] ~ ~ -1");
        EXPECT_EQ(initialized, 1);
        EXPECT_EQ(terminated, 0);
    }
    EXPECT_EQ(terminated, 1);
    capture([&] {
        SAX_Memory_Parser bad(cut);
        EXPECT_EQ(bad.start(), 0);
        EXPECT_EQ(steps(bad), "r 1");
        SAX_File_Parser none;
        EXPECT_EQ(none.start(path), 1);
        SAX_File_Parser never_started;
        SAX_Memory_Parser nothing(nullptr);
    });
    EXPECT_EQ(initialized, 4);
    EXPECT_EQ(terminated, 4);
}

} // namespace
