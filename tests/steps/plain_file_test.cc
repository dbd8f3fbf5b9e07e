/// Which files the scanner opens, and how a reading ends when its file changes meanwhile.

#include "steps/plain_file.h"

#include <cerrno>
#include <climits>
#include <filesystem>
#include <fstream>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/channel_records.h"
#include "support/lane_steps.h"
#include "zeb5_gige_descr.h"

namespace {

using zeb5::lane_end;

bool is_opened(const std::string &path) { return zeb5::plain_file(path.c_str()).is_open(); }

TEST(PlainFile, IsARegularOneThatIsNotEmpty) {
    const temporary_folder folder;
    std::ofstream(folder / "full") << "x";
    std::ofstream(folder / "empty") << "";
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    std::filesystem::create_symlink("full", folder / "link");
    EXPECT_TRUE(is_opened(folder / "full"));
    EXPECT_TRUE(is_opened(folder / "link"));
    EXPECT_FALSE(is_opened(folder / "empty"));
    EXPECT_FALSE(is_opened(folder / "none"));
    EXPECT_FALSE(is_opened(folder.path()));
    EXPECT_FALSE(is_opened("/dev/null"));
    EXPECT_FALSE(is_opened("/proc/version")) << "it says that it is empty";
    EXPECT_FALSE(is_opened(""));
    EXPECT_FALSE(is_opened(folder / "pipe")) << "nobody writes to it: opening it would take for ever";
}

TEST(PlainFile, IsNotTouchedUnlessItIsARegularOne) {
    const temporary_folder folder;
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    const int opened = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    ASSERT_GE(inotify_add_watch(opened, folder.path().c_str(), IN_OPEN), 0);
    EXPECT_FALSE(is_opened(folder / "pipe"));
    char event[sizeof(inotify_event) + NAME_MAX + 1];
    EXPECT_EQ(read(opened, event, sizeof event), -1) << "somebody has opened it";
    close(opened);
}

// The XML library takes paths as text
TEST(PlainFile, HasAPathThatMeansTheSameToTheXmlLibrary) {
    const temporary_folder folder;
    const working_folder there(folder.path());
    std::filesystem::create_directory("sub");
    for (const char *name : {"plain", "a b", "a~b", "a:b", "\xC3\xA4", "\x7F", "sub/plain", "..plain"})
        std::ofstream(name) << "x";
    EXPECT_TRUE(is_opened("plain"));
    EXPECT_TRUE(is_opened("./plain"));
    EXPECT_TRUE(is_opened("a b"));
    EXPECT_TRUE(is_opened("a~b"));
    EXPECT_TRUE(is_opened("sub/plain"));
    EXPECT_TRUE(is_opened("../" + std::filesystem::path(folder.path()).filename().string() + "/plain"));
    EXPECT_FALSE(is_opened("a:b"));
    EXPECT_FALSE(is_opened("\xC3\xA4"));
    EXPECT_FALSE(is_opened("\x7F"));
    EXPECT_FALSE(is_opened("sub/../plain"));
    EXPECT_FALSE(is_opened("..plain")) << "it is left to the XML library";
    const working_folder deeper("sub");
    EXPECT_TRUE(is_opened("../plain"));
    EXPECT_FALSE(is_opened("../..plain")) << "no harm done";
}

TEST(PlainFile, IsReadFromAnyPlace) {
    const temporary_file named("0123456789");
    const zeb5::plain_file file(named.path().c_str());
    EXPECT_EQ(file.size(), 10u);
    char bytes[20] = {};
    errno = EINTR; // somebody else's
    EXPECT_EQ(file.read(bytes, 4, 3), 4);
    EXPECT_STREQ(bytes, "3456");
    EXPECT_EQ(file.read(bytes, 20, 8), 2);
    EXPECT_STREQ(bytes, "8956");
    errno = EINTR;
    EXPECT_EQ(file.read(bytes, 20, 10), 0) << "the end";
    EXPECT_EQ(file.read(bytes, 20, SIZE_MAX), -1) << "no such place";
}

// It puts the working folder in front of a relative one
TEST(PlainFile, IsNotRelativeToAFolderThatTheXmlLibraryCannotUse) {
    const temporary_folder folder;
    std::ofstream(folder / "file") << "<r>&e;</r>";
    for (const char *name : {"gone", "\xE4", "a:b"}) {
        std::filesystem::create_directory(folder / name);
        const working_folder back(folder.path());
        ASSERT_EQ(chdir(name), 0);
        if (name == std::string("gone")) {
            std::filesystem::remove(folder / name);
        }
        EXPECT_FALSE(is_opened("../file")) << name;
        EXPECT_TRUE(is_opened(folder / "file")) << name;
        char path[] = "../file";
        const steps_seen seen = lane_steps_of(READ_FILE, WITH_LANE, path, path);
        EXPECT_EQ(seen, lane_steps_of(READ_FILE, WITHOUT_LANE, path, path)) << name;
    }
}

TEST(PlainFile, MayGetTheDescriptorOfAClosedStandardInput) {
    const temporary_file named("0123456789");
    const int standard_input = dup(STDIN_FILENO);
    close(STDIN_FILENO);
    {
        const zeb5::plain_file file(named.path().c_str());
        EXPECT_TRUE(file.is_open());
        EXPECT_EQ(fcntl(STDIN_FILENO, F_GETFD), FD_CLOEXEC);
    }
    EXPECT_EQ(fcntl(STDIN_FILENO, F_GETFD), -1) << "it is open still";
    if (standard_input >= 0) {
        dup2(standard_input, STDIN_FILENO);
        close(standard_input);
    }
}

TEST(PlainFile, IsClosedAgain) {
    const temporary_file file("<r>x</r>");
    const int before = open("/dev/null", O_RDONLY | O_CLOEXEC);
    close(before);
    EXPECT_EQ(lane_steps(READ_FILE, WITH_LANE, "<r>x</r>").tags, "r r[x] ");
    const int after = open("/dev/null", O_RDONLY | O_CLOEXEC);
    close(after);
    EXPECT_EQ(after, before);
}

// Files that change while they are read. Each step is taken singly, and in between the file is changed.

/// More than the scanner reads at once.
std::string large_document(const std::string &end) {
    std::string text = "<r>";
    for (int i = 0; i < 40'000; ++i)
        text += "<a>" + std::to_string(i) + "</a>\n";
    return text + end;
}

struct changed_reading {
    int steps = 0;
    int errors = 0;
    captured streams;
};

/// Reads a file and calls `change(path)` after three steps.
template <class Change> changed_reading read_changing(const std::string &document, Change change) {
    const temporary_file file(document);
    std::string path = file.path();
    const way_in_use used(WITH_LANE);
    changed_reading seen;
    seen.streams = capture([&] {
        zeb5::file_document read(path.data());
        zeb5::document_steps steps(read);
        steps.set_rows([](std::string_view) { return zeb5::reader_row{0, true}; });
        for (; steps.next(); ++seen.steps)
            if (seen.steps == 2)
                change(path);
        seen.errors = steps.error_count();
    });
    seen.streams.err = replace_all(seen.streams.err, path, "DOCUMENT");
    return seen;
}

void append_to(const std::string &path) { std::ofstream(path, std::ios::app) << "<!-- more -->"; }
void cut(const std::string &path) { std::filesystem::resize_file(path, 1000); }
void overwrite(const std::string &path) {
    const auto before = std::filesystem::last_write_time(path);
    std::fstream(path, std::ios::in | std::ios::out | std::ios::binary).seekp(300'000) << "<b>";
    std::filesystem::last_write_time(path,
                                     before + std::chrono::seconds(1)); // whatever the clock's steps are
}

TEST(PlainFile, ThatChangesIsAnErrorAndWhatWasReadStays) {
    for (const auto change : {append_to, cut, overwrite}) {
        const changed_reading seen = read_changing(large_document("</r>"), change);
        EXPECT_GT(seen.steps, 1000);
        EXPECT_LT(seen.steps, 80'000);
        EXPECT_EQ(seen.errors, 1);
        EXPECT_EQ(seen.streams.err, "\nError at (file DOCUMENT): the file has changed while it was read\n");
        EXPECT_EQ(seen.streams.out, "");
    }
}

TEST(PlainFile, ThatHasChangedIsNotHandedOver) {
    for (const auto change : {append_to, cut, overwrite}) {
        const changed_reading seen =
            read_changing("<r><a>1</a><a>2</a>&e;" + std::string(400'000, ' ') + "</r>", change);
        EXPECT_EQ(seen.steps, 5);
        EXPECT_EQ(seen.errors, 1);
        EXPECT_EQ(seen.streams.err, "\nError at (file DOCUMENT): the file has changed while it was read\n");
    }
}

TEST(PlainFile, ThatChangesBehindTheHandingOverIsAnErrorToo) {
    const changed_reading seen = read_changing("<!DOCTYPE r>" + large_document("</r>"), append_to);
    EXPECT_GT(seen.steps, 1000);
    EXPECT_LT(seen.steps, 80'000);
    EXPECT_EQ(seen.errors, 1);
    EXPECT_EQ(seen.streams.err,
              "\nFatal Error at (file DOCUMENT, line 4188, char 4): unable to read data from file\n"
              "\nError at (file DOCUMENT): the file has changed while it was read\n");
}

TEST(PlainFile, WhosePathIsTakenByAnotherIsReadToItsEnd) {
    const auto replace = [](const std::string &path) {
        std::ofstream(path + ".new") << "<r><b>another</b></r>";
        std::filesystem::rename(path + ".new", path);
    };
    changed_reading seen = read_changing(large_document("</r>"), replace);
    EXPECT_EQ(seen.steps, 80'001);
    EXPECT_EQ(seen.errors, 0);
    seen = read_changing(large_document("&e;</r>"), replace);
    EXPECT_EQ(seen.steps, 80'001);
    EXPECT_EQ(seen.errors, 1);
    EXPECT_EQ(seen.streams.err,
              "\nFatal Error at (file DOCUMENT, line 40001, char 4): entity 'e' not found\n");
}

} // namespace
