/// How long the platform of the XML library is up.

#include "xml_platform.h"

#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <xercesc/util/PlatformUtils.hpp>

#include "SAX_File_Parser.h"
#include "SAX_Memory_Parser.h"
#include "support/capture.h"
#include "support/sax_sources.h"
#include "support/test_files.h"

namespace {

/// The platform has its memory manager from the first reference to the last.
bool is_up() { return xercesc::XMLPlatformUtils::fgMemoryManager != nullptr; }

TEST(XmlPlatform, IsUpWhileAnyHolderLives) {
    ASSERT_FALSE(is_up());
    auto first = std::make_unique<xml_platform>();
    EXPECT_TRUE(is_up());
    auto second = std::make_unique<xml_platform>();
    first.reset();
    EXPECT_TRUE(is_up());
    second.reset();
    EXPECT_FALSE(is_up());
}

TEST(XmlPlatform, MayComeUpAgain) {
    for (int i = 0; i < 3; ++i) {
        const xml_platform platform;
        EXPECT_TRUE(is_up());
    }
    EXPECT_FALSE(is_up());
}

struct use {
    const char *name;
    void (*run)();
};

template <class Source> void read(const char *document) {
    Source source(document);
    EXPECT_TRUE(is_up());
    capture([&] {
        if (source.start() == 0)
            steps(source.parser());
    });
}

template <class Source> void read_in_parts() {
    Source never_started("<r/>");
    Source started("<r/>");
    EXPECT_EQ(started.start(), 0);
    Source half_way("<r n=\"1\">text</r>");
    EXPECT_EQ(half_way.start(), 0);
    EXPECT_EQ(step(half_way.parser()), "r");
    EXPECT_EQ(step(half_way.parser()), "r[text]");
}

template <class Source>
const std::vector<use> uses = {
    {"good", [] { read<Source>("<r n=\"1\">\xc3\xa4<a/></r>"); }},
    {"ill-formed", [] { read<Source>("<r n=\"1\"><a>"); }},
    {"not started", [] { read<Source>("junk"); }},
    {"not started, with an exception",
     [] { read<Source>("<?xml version=\"1.0\" encoding=\"x\x80\"?><r/>"); }},
    {"with a refused entity", [] { read<Source>("<!DOCTYPE r SYSTEM \"none.dtd\"><r/>"); }},
    {"in parts", read_in_parts<Source>},
    {"nested",
     [] {
         Source outer("<r/>");
         read<Source>("<r/>");
         EXPECT_TRUE(is_up());
     }},
};

const std::vector<use> other_uses = {
    {"memory reader without a text", [] { SAX_Memory_Parser parser(nullptr); }},
    {"file reader without a file", [] { SAX_File_Parser parser; }},
    {"file reader of no file",
     [] {
         SAX_File_Parser parser;
         char path[] = "/nowhere/none.xml";
         capture([&] { EXPECT_EQ(parser.start(path), 1); });
     }},
};

/// Every use gives back exactly what it took: one too few and the platform stays up, one too many and it goes
/// down under a holder.
void expect_balance(const std::vector<use> &all) {
    for (const auto &u : all) {
        ASSERT_FALSE(is_up()) << u.name;
        u.run();
        ASSERT_FALSE(is_up()) << u.name;
        {
            const xml_platform holder;
            u.run();
            ASSERT_TRUE(is_up()) << u.name;
        }
        ASSERT_FALSE(is_up()) << u.name;
    }
}

TEST(XmlPlatform, IsGivenBackByEveryReaderGoodOrFailed) {
    expect_balance(uses<memory_source>);
    expect_balance(uses<file_source>);
    expect_balance(other_uses);
}

TEST(XmlPlatform, ServesReadersOnSeveralThreads) {
    std::vector<std::thread> threads;
    std::vector<int> good(8);
    for (auto &count : good)
        threads.emplace_back([&count] {
            for (int i = 0; i < 50; ++i) {
                memory_source memory("<r n=\"1\">x<a>\xc3\xa4</a></r>");
                file_source file("<r n=\"1\">x<a>\xc3\xa4</a></r>");
                const std::string expected = "r r[x] a a[\xc3\xa4] ~ ~ ~ -1";
                if (memory.start() == 0 && steps(memory.parser()) == expected && //
                    file.start() == 0 && steps(file.parser()) == expected)
                    ++count;
            }
        });
    for (auto &thread : threads)
        thread.join();
    EXPECT_EQ(good, std::vector<int>(8, 50));
    EXPECT_FALSE(is_up());
}

} // namespace
