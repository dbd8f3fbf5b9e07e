/// Whether each file and socket that a reader opens is counted.

#include "support/read_apart.h"

#include <cstdio>
#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <gtest/gtest.h>
#include <xercesc/parsers/XercesDOMParser.hpp>

#include "xml_platform.h"

namespace {

TEST(ReadApart, CountsWhatIsOpened) {
    const temporary_file file;
    const char *const path = file.path().c_str();
    EXPECT_EQ(others_opened(path, [path] { close(open(path, O_RDONLY)); }), 0);
    EXPECT_EQ(others_opened(path, [] { close(open("/dev/null", O_RDONLY)); }), 1);
    EXPECT_EQ(others_opened(path, [] { fclose(fopen("/dev/null", "r")); }), 1);
    EXPECT_EQ(others_opened(path, [] { close(socket(AF_INET, SOCK_STREAM, 0)); }), 1);
}

TEST(ReadApart, CountsWhatTheXmlLibraryOpens) {
    const temporary_file other("x");
    const temporary_file file("<!DOCTYPE r [<!ENTITY e SYSTEM '" + other.path() + "'>]><r>&e;</r>");
    const char *const path = file.path().c_str();
    const xml_platform platform;
    xercesc::XercesDOMParser parser;
    EXPECT_EQ(others_opened(path, [&] { parser.parse(path); }), 1);
}

} // namespace
