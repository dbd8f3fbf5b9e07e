/// Starts of the two pull readers: sources that cannot be read, and what is said of them.

#include "SAX_File_Parser.h"
#include "SAX_Memory_Parser.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

#include <gtest/gtest.h>

#include "support/capture.h"
#include "support/sax_sources.h"
#include "support/test_files.h"

namespace {

struct opened {
    int result;
    std::string out, err;
    int count;
};

opened open_file(std::string path) {
    SAX_File_Parser parser;
    opened seen{};
    const captured streams = capture([&] { seen.result = parser.start(path.data()); });
    seen.out = streams.out;
    seen.err = streams.err;
    seen.count = parser.get_error_counter();
    return seen;
}

std::string not_started(const std::string &reason) {
    return "\nError during parsing memory stream:\nException message is:  \n" + reason + '\n';
}

void expect_not_opened(const std::string &path, const std::string &reason) {
    const opened seen = open_file(path);
    EXPECT_EQ(seen.result, 1) << path;
    EXPECT_EQ(seen.err, not_started(reason)) << path;
    EXPECT_EQ(seen.out, "") << path;
    EXPECT_EQ(seen.count, 0) << path;
}

TEST(SaxParserOpenFile, DoesNotStartOnAFileThatCannotBeOpened) {
    const temporary_folder folder;
    expect_not_opened(folder / "none.xml",
                      "unable to open primary document entity '" + (folder / "none.xml") + "'");
    expect_not_opened(folder / "./b/./none.xml",
                      "unable to open primary document entity '" + (folder / "b/none.xml") + "'");
    expect_not_opened("none.xml", "unable to open primary document entity '" +
                                      (std::filesystem::current_path() / "none.xml").string() + "'");
    expect_not_opened("", "unable to open primary document entity ''");
}

TEST(SaxParserOpenFile, DoesNotStartOnAFolder) {
    const temporary_folder folder;
    expect_not_opened(folder.path(), "unable to read data from file");
}

TEST(SaxParserOpenFile, DoesNotStartOnAPathThatLooksLikeAnAddress) {
    setenv("no_proxy", "*", 1); // the port below is one of this machine, and closed
    expect_not_opened("http://127.0.0.1:1/none.xml",
                      "unable to connect socket for URL 'http://127.0.0.1:1/none.xml'");
    expect_not_opened("file://elsewhere/none.xml", "internal error in NetAccessor");
}

TEST(SaxParserOpenFile, DoesNotStartOnAFileWithoutAName) {
    SAX_File_Parser parser;
    ASSERT_TRUE(parser.init_ok());
    const captured streams = capture([&] { EXPECT_EQ(parser.start(nullptr), 1); });
    EXPECT_EQ(streams.err, "");
    EXPECT_EQ(streams.out, "");
    EXPECT_EQ(parser.get_error_counter(), 0);
}

TEST(SaxParserOpenFile, DoesNotStartOnAnEmptyDevice) {
    const opened seen = open_file("/dev/null");
    EXPECT_EQ(seen.result, 1);
    EXPECT_EQ(seen.err, "\nFatal Error at (file /dev/null, line 1, char 1): invalid document "
                        "structure\nscanFirst() failed\n");
    EXPECT_EQ(seen.count, 1);
}

TEST(SaxParserOpenFile, NamesTheFileByItsAbsolutePathInReports) {
    const temporary_folder folder;
    std::ofstream(folder / "bad name \xc3\xa4.xml") << "<r>";
    std::filesystem::create_directory(folder / "sub");
    const std::string expected =
        "\nFatal Error at (file " + (folder / "bad name \xc3\xa4.xml") +
        ", line 1, char 4): input ended before all started tags were ended; last tag "
        "started is 'r'\n";
    const working_folder here(folder.path());
    for (std::string path :
         {folder / "bad name \xc3\xa4.xml", folder / "././bad name \xc3\xa4.xml",
          std::string("bad name \xc3\xa4.xml"), std::string("./sub/../bad name \xc3\xa4.xml")}) {
        SAX_File_Parser parser;
        const captured streams = capture([&] {
            EXPECT_EQ(parser.start(path.data()), 0) << path;
            EXPECT_EQ(steps(parser), "r 1") << path;
        });
        EXPECT_EQ(streams.err, expected) << path;
    }
}

TEST(SaxParserOpenMemory, WithoutATextIsNotReady) {
    const captured streams = capture([] {
        SAX_Memory_Parser parser(nullptr);
        EXPECT_FALSE(parser.init_ok());
        EXPECT_EQ(parser.start(), 1);
        EXPECT_EQ(step(parser), "-1");
        EXPECT_EQ(parser.get_error_counter(), 0);
        char name[] = "n", *value = name;
        EXPECT_EQ(parser.get_attr(name, &value), -1);
        EXPECT_EQ(value, nullptr);
    });
    EXPECT_EQ(streams.err, "");
    EXPECT_EQ(streams.out, "");
}

TEST(SaxParserOpenMemory, ThrowsWhenItIsAskedBeforeItsStart) {
    std::string document = "<r/>";
    SAX_Memory_Parser parser(document.data());
    EXPECT_THROW(step(parser), xercesc::XMLException);
    EXPECT_THROW(step(parser), xercesc::XMLException);
    EXPECT_EQ(parser.start(), 0);
    EXPECT_EQ(steps(parser), "r ~ -1");
}

TEST(SaxParserOpenFile, ThrowsWhenItIsAskedAfterAStartThatFailed) {
    std::string missing = "missing.xml";
    SAX_File_Parser parser;
    const captured streams = capture([&] { EXPECT_EQ(parser.start(missing.data()), 1); });
    EXPECT_THROW(step(parser), xercesc::XMLException);
}

TEST(SaxParserOpenMemory, ReadsTheCallersBufferAndLeavesItAsItIs) {
    const std::string document = "<r n=\"1\">x &amp; y</r>";
    std::string buffer = document + '\0' + "what follows the NUL is not read";
    const std::string before = buffer;
    SAX_Memory_Parser parser(buffer.data());
    ASSERT_TRUE(parser.init_ok());
    ASSERT_EQ(parser.start(), 0);
    EXPECT_EQ(steps(parser), "r r[& y] ~ ~ -1");
    EXPECT_EQ(buffer, before);
}

} // namespace
