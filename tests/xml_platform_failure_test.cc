/// A platform that does not come up, or has no text for a character. Initialize(), Terminate() and
/// transcode() are this program's own here: they count and pass on, or refuse, which the real ones cannot be
/// made to do. That is why these tests are a program of their own.

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
#include <xercesc/util/XMLString.hpp>

#include "SAX_File_Parser.h"
#include "SAX_Memory_Parser.h"
#include "descr_extractor.h"
#include "parse_env_index_dictionary.h"
#include "parse_ev_list.h"
#include "steps/local_code.h"
#include "support/capture.h"
#include "support/channel_records.h"
#include "support/sax_sources.h"
#include "zeb5_gige_descr.h"

namespace {

int initialized = 0; // calls that were passed on
int terminated = 0;
int went_down = 0; // calls that ended the platform
enum { passing_on, refusing, out_of_memory, breaking } platform = passing_on;
bool has_no_umlauts = false;

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
    went_down += fgTransService == nullptr;
}

char *XMLString::transcode(const XMLCh *const text, MemoryManager *const memory_manager) {
    if (has_no_umlauts && indexOf(text, u'\u00DC') != -1)
        return nullptr;
    return real<char *(const XMLCh *, MemoryManager *)>(transcode)(text, memory_manager);
}

XERCES_CPP_NAMESPACE_END

namespace {

/// The platform is up, as the message of an exception needs it, and refuses whoever wants it too.
class XmlPlatformFailure : public testing::Test {
protected:
    XmlPlatformFailure() {
        initialized = terminated = 0;
        platform = refusing;
    }
    ~XmlPlatformFailure() override { platform = passing_on; }

    xml_platform up;
};

/// The library asks once in a process whether the local code keeps ASCII, and starts the platform for that.
void ask_for_the_local_code() {
    EXPECT_TRUE(zeb5::local_code_keeps_ascii());
    initialized = terminated = went_down = 0;
}

const char refusal[] = "Error during initialization! Message:\nparsing in progress\n";

TEST_F(XmlPlatformFailure, MakesReadersThatAreNotReady) {
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

TEST_F(XmlPlatformFailure, IsNotAskedForANullText) {
    const captured streams = capture([] { EXPECT_FALSE(SAX_Memory_Parser(nullptr).init_ok()); });
    EXPECT_EQ(streams.err, "");
}

TEST_F(XmlPlatformFailure, MakesEveryReadingOfADocumentFail) {
    char text[] = "<CHANDESCRIPTIONS/>", path[] = "/dev/null";
    const captured streams = capture([&] {
        channel_list list;
        EXPECT_EQ(parse_descr_list_read(text, &list.records, true, true), 1);
        EXPECT_EQ(parse_descr_list_readf(path, &list.records, true, true), 1);
        EXPECT_EQ(describe(list.records), "");
    });
    EXPECT_EQ(streams.err, std::string(refusal) + refusal);
    EXPECT_EQ(streams.out, "");
    EXPECT_EQ(initialized, 0);
    EXPECT_EQ(terminated, 0);
}

// The extractor wants it for all of its sources, and tells nothing of its own
TEST_F(XmlPlatformFailure, MakesEverySourceOfAnExtractorFail) {
    char text[] = "<CHANDESCRIPTIONS/>";
    std::vector<char *> sources = {text, text};
    int total = 99;
    channel_list list;
    descr_extractor extractor;
    extractor.set_mode(EXTR_FROM_XML);
    const captured streams =
        capture([&] { EXPECT_TRUE(extractor.get_descriptions(&sources, &total, &list.records, false)); });
    EXPECT_EQ(streams.err, std::string(refusal) + refusal);
    EXPECT_EQ(streams.out, "");
    EXPECT_EQ(total, 99);
    EXPECT_EQ(describe(list.records), "");
    EXPECT_EQ(initialized, 0);
    EXPECT_EQ(terminated, 0);
}

TEST_F(XmlPlatformFailure, ServesTheNextReaderOnceItComesUp) {
    char text[] = "<r>x</r>";
    capture([&] { EXPECT_FALSE(SAX_Memory_Parser(text).init_ok()); });
    platform = passing_on;
    ask_for_the_local_code();
    {
        SAX_Memory_Parser parser(text);
        EXPECT_TRUE(parser.init_ok());
        EXPECT_EQ(parser.start(), 0);
        EXPECT_EQ(steps(parser), "r r[x] ~ ~ -1");
    }
    EXPECT_EQ(initialized, 1);
    EXPECT_EQ(terminated, 1);
}

TEST_F(XmlPlatformFailure, ThrowsItsOwnExceptionsThroughAHolder) {
    EXPECT_THROW(xml_platform(), xercesc::XMLException);
    platform = out_of_memory;
    EXPECT_THROW(xml_platform(), std::bad_alloc);
    EXPECT_EQ(terminated, 0);
    platform = passing_on;
    EXPECT_NO_THROW(xml_platform()); // and no lock is left behind
    EXPECT_EQ(initialized, 1);
    EXPECT_EQ(terminated, 1);
}

// Xerces is then half up for good: who used it crashed. In a process of its own, as that one is lost; it ends
// as others do, and that does not use Xerces either.
TEST(XmlPlatformFailureForGood, IsNotTriedAgain) {
    const auto try_twice = [] {
        platform = breaking;
        char text[] = "<r/>";
        for (int i = 0; i < 2; ++i) {
            try {
                SAX_Memory_Parser parser(text);
                std::exit(1);
            } catch (const xercesc::OutOfMemoryException &) {
                platform = passing_on;
            }
        }
        std::exit(initialized == 0 && terminated == 0 ? 0 : 2);
    };
    initialized = terminated = 0;
    EXPECT_EXIT(try_twice(), testing::ExitedWithCode(0), "");
}

TEST(XmlPlatformFailureCounted, IsTakenOnceAndGivenBackOnceByEveryReader) {
    ask_for_the_local_code();
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

// Plain documents need no platform, once it was asked whether texts may be taken as they stand

char plain_channels[] = "<CHANDESCRIPTIONS><CHANNEL><PROP>A</PROP></CHANNEL></CHANDESCRIPTIONS>";

TEST(XmlPlatformFailurePlainDocuments, DoNotStartThePlatform) {
    ask_for_the_local_code();
    const temporary_file file(plain_channels), camera("<Integer Name='a'/>");
    std::string path = file.path(), camera_path = camera.path();
    char events[] = "<BMR/>", dictionary[] = "<ENVINDEXDICT/>";
    std::vector<char *> sources{plain_channels, plain_channels};
    channel_list list;
    std::vector<zeb5_ev_entry *> entries;
    std::vector<zeb5_env_index_dictionary_entry *> records;
    std::vector<ZEB5GigEFeature *> features;
    descr_extractor extractor;
    extractor.set_mode(EXTR_FROM_XML);
    EXPECT_EQ(parse_descr_list_read(plain_channels, &list.records, true, true), 0);
    EXPECT_EQ(parse_descr_list_readf(path.data(), &list.records, true, true), 0);
    EXPECT_EQ(zeb5_parse_ev_list_read(events, &entries), 0);
    EXPECT_EQ(parse_env_index_dict_list_read(dictionary, &records), 0);
    EXPECT_FALSE(zeb5_fill_gige_descr(camera_path.data(), &features));
    EXPECT_FALSE(extractor.get_descriptions(&sources, nullptr, &list.records, false));
    EXPECT_EQ(features.size(), 1u);
    zeb5_clean_gige_descr(&features);
    EXPECT_EQ(initialized, 0);
    EXPECT_EQ(terminated, 0);
}

TEST(XmlPlatformFailurePlainDocuments, NeedThePlatformForTextsBeyondAscii) {
    ask_for_the_local_code();
    char text[] =
        "<CHANDESCRIPTIONS><CHANNEL><PROP>\xC3\xA4</PROP><NAME>\xC3\xB6</NAME></CHANNEL></CHANDESCRIPTIONS>";
    channel_list list;
    EXPECT_EQ(parse_descr_list_read(text, &list.records, true, true), 0);
    EXPECT_STREQ(list.records.at(0)->prop_name, "\xC3\xA4");
    EXPECT_EQ(initialized, 1);
    EXPECT_EQ(terminated, 1);
}

TEST(XmlPlatformFailurePlainDocuments, ThatCannotBeHandedOverAreReadUpToThere) {
    ask_for_the_local_code();
    for (const char *rest : {"&e;", "<CHANNEL><PROP>\xC3\xA4</PROP></CHANNEL>"}) {
        std::string text =
            std::string("<CHANDESCRIPTIONS><CHANNEL><PROP>A</PROP></CHANNEL>") + rest + "</CHANDESCRIPTIONS>";
        channel_list list;
        const xml_platform up; // as the message of an exception needs it
        platform = refusing;
        const captured streams =
            capture([&] { EXPECT_EQ(parse_descr_list_read(text.data(), &list.records, true, true), 1); });
        platform = passing_on;
        EXPECT_EQ(streams.err, refusal);
        ASSERT_EQ(list.records.size(), 1u);
        EXPECT_STREQ(list.records[0]->prop_name, "A");
    }
}

TEST(XmlPlatformFailurePlainDocuments, LeaveAnExtractorsPlatformToTheSourcesThatNeedIt) {
    ask_for_the_local_code();
    char declared[] = "<!DOCTYPE CHANDESCRIPTIONS><CHANDESCRIPTIONS/>";
    std::vector<char *> sources{plain_channels, declared, plain_channels, declared, declared};
    channel_list list;
    descr_extractor extractor;
    extractor.set_mode(EXTR_FROM_XML);
    int total = 0;
    EXPECT_FALSE(extractor.get_descriptions(&sources, &total, &list.records, false));
    EXPECT_EQ(total, 5);
    EXPECT_EQ(went_down, 1) << "the first one keeps it up for those behind";
    EXPECT_EQ(initialized, terminated);
}

TEST(XmlPlatformFailurePlainDocuments, KeepAnExtractorsPlatformForTextsBeyondAscii) {
    ask_for_the_local_code();
    char text[] = "<CHANDESCRIPTIONS><CHANNEL><UNITS>\xC2\xB5m</UNITS></CHANNEL></CHANDESCRIPTIONS>";
    std::vector<char *> sources{text, text, text};
    channel_list list;
    descr_extractor extractor;
    extractor.set_mode(EXTR_FROM_XML);
    EXPECT_FALSE(extractor.get_descriptions(&sources, nullptr, &list.records, false));
    EXPECT_EQ(went_down, 1);
    EXPECT_EQ(initialized, terminated);
}

// Transcoders of other systems have none for some characters
template <class Source> class XmlPlatformFailureWithoutUmlauts : public testing::Test {
protected:
    XmlPlatformFailureWithoutUmlauts() { has_no_umlauts = true; }
    ~XmlPlatformFailureWithoutUmlauts() override { has_no_umlauts = false; }
};
using sources = testing::Types<memory_source, file_source>;
TYPED_TEST_SUITE(XmlPlatformFailureWithoutUmlauts, sources, );

TYPED_TEST(XmlPlatformFailureWithoutUmlauts, GivesStepsWithoutTheirText) {
    TypeParam source("<r>\u00DC<\u00DC>x</\u00DC><a>A\u00DC</a><a>A</a></r>");
    const outcome seen = read(source);
    EXPECT_EQ(seen.started, 0);
    EXPECT_EQ(seen.steps_seen, "r r ~ ~ ~ a a a a a[A] ~ ~ ~ -1"); // the end tag drops a tag without a value
    EXPECT_EQ(seen.streams.err, "");
}

TYPED_TEST(XmlPlatformFailureWithoutUmlauts, HasNoAttributeOfSuchAValue) {
    TypeParam source("<r a='\u00DC' b='B'/>");
    ASSERT_EQ(source.start(), 0);
    EXPECT_EQ(step(source.parser()), "r");
    char a[] = "a", b[] = "b", *value = a;
    EXPECT_EQ(source.parser().get_attr(a, &value), -1);
    EXPECT_EQ(value, nullptr);
    EXPECT_EQ(source.parser().get_attr(b, &value), 0);
    EXPECT_STREQ(value, "B");
}

} // namespace
