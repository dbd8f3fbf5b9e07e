/// Streams of a parser: they count what is read, and each is closed, also when the parser forgets it.

#include "limits/parser_streams.h"

#include <memory>
#include <optional>
#include <string>
#include <unistd.h>

#include <gtest/gtest.h>
#include <xercesc/framework/LocalFileInputSource.hpp>
#include <xercesc/framework/URLInputSource.hpp>
#include <xercesc/util/BinInputStream.hpp>

#include "limits/parser_memory.h"
#include "steps/narrow_text.h"
#include "support/descriptors.h"
#include "support/test_files.h"
#include "xml_platform.h"

namespace {

class no_meter : public zeb5::parse_meter {
    void end_with(const char16_t *) override {}
};

class ParserStreams : public testing::Test {
protected:
    std::unique_ptr<xercesc::BinInputStream> open(const char *path) {
        const auto source = streams->source_of(path);
        return std::unique_ptr<xercesc::BinInputStream>(
            source ? zeb5::metered_source(*source, *streams).makeStream() : nullptr);
    }

    static std::string text_of(xercesc::BinInputStream &stream) {
        XMLByte text[100];
        return {reinterpret_cast<const char *>(text), stream.readBytes(text, sizeof text)};
    }

    const xml_platform platform;
    no_meter meter;
    zeb5::parser_memory memory{meter};
    std::unique_ptr<zeb5::parser_streams> streams = std::make_unique<zeb5::parser_streams>(meter, memory);
    const temporary_file one{"one"}, two{"two"}, three{"three"};
    const int free_before = first_free_descriptor();
};

TEST_F(ParserStreams, AreReadAndClosed) {
    auto first = open(one.path().c_str());
    auto second = open(two.path().c_str());
    auto third = open(three.path().c_str());
    EXPECT_EQ(text_of(*second), "two");
    second.reset(); // in no order
    EXPECT_EQ(text_of(*third), "three");
    third.reset();
    EXPECT_EQ(text_of(*first), "one");
    first.reset();
    EXPECT_EQ(first_free_descriptor(), free_before);
}

TEST_F(ParserStreams, AreClosedAtTheEndWhenTheyAreForgotten) {
    (void)open(one.path().c_str()).release();
    (void)open(two.path().c_str()).release();
    auto closed = open(three.path().c_str());
    EXPECT_NE(first_free_descriptor(), free_before);
    (void)open(one.path().c_str()).release();
    closed.reset();
    streams.reset();
    EXPECT_EQ(first_free_descriptor(), free_before);
}

TEST_F(ParserStreams, HaveNoStreamWhenTheyAreMissing) {
    const temporary_folder folder;
    EXPECT_EQ(open((folder / "missing.xml").c_str()), nullptr);
}

TEST_F(ParserStreams, AreKnownByTheirWholePath) {
    const auto source = streams->source_of("a/../b.xml");
    char folder[4096];
    ASSERT_NE(getcwd(folder, sizeof folder), nullptr);
    EXPECT_EQ(zeb5::transcode(source->getSystemId()).get(), std::string(folder) + "/b.xml");
}

TEST_F(ParserStreams, AreOfTheAddressThatTheXmlLibraryTakesAPathFor) {
    for (const char *address : {"http://127.0.0.1:9/a.xml", "file:///etc/passwd", "file:/etc/passwd"})
        EXPECT_NE(dynamic_cast<xercesc::URLInputSource *>(streams->source_of(address).get()), nullptr)
            << address;
    for (const char *path : {"a:b.xml", "a.xml", "/a.xml", "unknown://a"})
        EXPECT_NE(dynamic_cast<xercesc::LocalFileInputSource *>(streams->source_of(path).get()), nullptr)
            << path;
    EXPECT_EQ(text_of(*open(("file://" + one.path()).c_str())), "one");
}

TEST_F(ParserStreams, HaveNoPathFromAFolderThatIsGone) {
    std::optional<temporary_folder> folder(std::in_place);
    const working_folder here(folder->path());
    folder.reset();
    EXPECT_EQ(streams->source_of("a.xml"), nullptr);
    EXPECT_NE(streams->source_of("/a.xml"), nullptr);
}

} // namespace
