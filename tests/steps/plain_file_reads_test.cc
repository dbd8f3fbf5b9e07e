/// Files on an unusual file system: a read returns fewer bytes than were asked for, fails midway, or the file
/// is written to between two reads. The program is linked with --wrap=pread, so that this file replaces the
/// reads of this library. The reads of the XML library are not replaced.

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <functional>
#include <string>

#include <gtest/gtest.h>
#include <sys/types.h>

#include "support/camera_features.h"
#include "support/lane_steps.h"
#include "xml_platform.h"

namespace {

std::size_t most_at_once = SIZE_MAX;
off_t first_bad_byte = -1;
std::function<void()> before_read;

/// The rest that is to be read next: what the last read did not give. A longer read would go beyond the
/// buffer.
struct {
    off_t offset = -1;
    std::size_t count = 0;
} rest;

} // namespace

extern "C" ssize_t __real_pread(int file, void *to, std::size_t count, off_t offset);

extern "C" ssize_t __wrap_pread(int file, void *to, std::size_t count, off_t offset) {
    if (before_read)
        before_read();
    if (offset == rest.offset) {
        EXPECT_EQ(count, rest.count);
    }
    const std::size_t wanted = count;
    count = std::min(count, most_at_once);
    if (first_bad_byte >= 0) {
        if (offset >= first_bad_byte) {
            errno = EIO;
            return -1;
        }
        count = std::min(count, static_cast<std::size_t>(first_bad_byte - offset));
    }
    const ssize_t got = __real_pread(file, to, count, offset);
    rest = {};
    if (got > 0 && static_cast<std::size_t>(got) < wanted)
        rest = {offset + got, wanted - static_cast<std::size_t>(got)};
    return got;
}

namespace {

class PlainFileReads : public testing::Test {
protected:
    void TearDown() override {
        most_at_once = SIZE_MAX;
        first_bad_byte = -1;
        before_read = nullptr;
    }

private:
    const xml_platform platform_; // starting it takes longer than a document
};

/// No test of this program has changed the switch yet. Programs that are no tests never change it.
const bool is_open_from_the_start = zeb5::lane.is_open;

TEST_F(PlainFileReads, GoThroughTheLaneUnlessATestClosesIt) { EXPECT_TRUE(is_open_from_the_start); }

TEST_F(PlainFileReads, MayGiveLessThanWasAskedFor) {
    using namespace std::string_literals;
    const std::string documents[] = {
        "<r><A>1</A><B a='2'/></r>",
        "\xEF\xBB\xBF<?xml version='1.0' encoding='utf-8'?><r>\xC3\xA4 x</r>\n",
        "<?xml version='1.0' encoding='ISO-8859-1'?><r>" + std::string(20, ' ') + "\xE9</r>",
        "<?xml version='1.0' encoding='windows-1252'?><r>\x80</r>",
        "\xFF\xFE<\0r\0>\0x\0<\0/\0r\0>\0"s,
        "<!DOCTYPE r><r><A>1</A></r>",
        "<r><A>1</A>&e;</r>",
    };
    for (const std::string &document : documents) {
        const steps_seen whole = lane_steps(READ_FILE, WITHOUT_LANE, document);
        for (const std::size_t most : {1u, 2u, 3u, 7u, 20u, 21u, 40u}) {
            most_at_once = most;
            EXPECT_EQ(lane_steps(READ_FILE, WITH_LANE, document), whole) << document << ", " << most;
        }
    }
}

std::string many_elements(std::size_t bytes) {
    std::string text = "<r>\n";
    while (text.size() < bytes)
        text += "<a>1</a>\n";
    return text + "</r>";
}

TEST_F(PlainFileReads, MayFailMidway) {
    for (const char *const before : {"", "<!DOCTYPE r>"}) {
        first_bad_byte = 200'000;
        const steps_seen seen = lane_steps(READ_FILE, WITH_LANE, before + many_elements(400'000));
        EXPECT_GT(seen.tags.size(), 100'000u) << before;
        EXPECT_EQ(seen.errors, 1) << before;
        EXPECT_EQ(seen.streams.err.substr(0, seen.streams.err.find("line")),
                  "\nFatal Error at (file DOCUMENT, ");
        EXPECT_TRUE(seen.streams.err.ends_with("): unable to read data from file\n")) << seen.streams.err;
    }
}

TEST_F(PlainFileReads, OfTheBeginningMayFail) {
    for (const char *const before : {"", "<!DOCTYPE r>"}) {
        first_bad_byte = 0;
        const steps_seen seen = lane_steps(READ_FILE, WITH_LANE, before + many_elements(100));
        EXPECT_EQ(seen.tags, "") << before;
        EXPECT_EQ(seen.streams.err, "\nError during parsing memory stream:\n"
                                    "Exception message is:  \n"
                                    "unable to read data from file\n");
    }
}

/// Of 64 KB each: the scanner takes two before it hands out a step, or leaves the document to the XML
/// library.
TEST_F(PlainFileReads, BeforeTheFirstStepTellOfAChange) {
    const std::string told_by_parser = "\nError during parsing memory stream:\n"
                                       "Exception message is:  \n"
                                       "unable to read data from file\n";
    struct {
        const char *before;
        int number;
        std::string told_before;
    } const rows[] = {{"", 1, ""},
                      {"", 2, ""},
                      {"<!DOCTYPE r>", 1, ""},
                      {"<!DOCTYPE r>", 2, ""},
                      {"<!DOCTYPE r>", 3, told_by_parser}};
    for (const auto &row : rows) {
        const temporary_file file(row.before + many_elements(400'000));
        std::string path = file.path();
        int reads = 0;
        before_read = [&] {
            if (++reads == row.number)
                std::filesystem::last_write_time(path, std::filesystem::file_time_type::clock::now() +
                                                           std::chrono::seconds(10));
        };
        const steps_seen seen = lane_steps_of(READ_FILE, WITH_LANE, path.data(), path);
        EXPECT_EQ(seen.tags, "") << row.before << row.number;
        EXPECT_EQ(seen.streams.err,
                  row.told_before + "\nError at (file DOCUMENT): the file has changed while it was read\n")
            << row.before << row.number;
    }
}

/// The scanner reads two blocks of 64 KB, finds the document type and leaves the file to the DOM parser.
TEST_F(PlainFileReads, OfACameraFileTellOfAChange) {
    struct {
        const char *before;
        int number;
        std::string outcome;
    } const rows[] = {{"", 1, parse_failure},
                      {"", 5, parse_failure},
                      {"<!DOCTYPE r>", 2, parse_failure},
                      {"<!DOCTYPE r>", 3, parse_failure},
                      {"<!DOCTYPE r>", 9, parse_failure},
                      {"<!DOCTYPE r>", 1000, "read"}};
    for (const auto &row : rows) {
        const temporary_file file(row.before + many_elements(400'000));
        int reads = 0;
        before_read = [&] {
            if (++reads == row.number)
                std::filesystem::last_write_time(file.path(), std::filesystem::file_time_type::clock::now() +
                                                                  std::chrono::seconds(10));
        };
        feature_list list;
        EXPECT_EQ(fill(file.path(), list), row.outcome) << row.before << row.number;
    }
}

} // namespace
