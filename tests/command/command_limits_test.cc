/// What the command leaves behind when its output cannot be written to the end: the old file, and nothing
/// else.

#include <csignal>
#include <filesystem>
#include <sys/resource.h>

#include <gtest/gtest.h>

#include "support/command_runner.h"

namespace {

std::string large_document() {
    std::string channels;
    for (int i = 0; i < 2000; ++i)
        channels += "<CHANNEL><PROP>PROPERTY/" + std::to_string(i) + "</PROP></CHANNEL>";
    return "<CHANDESCRIPTIONS>" + channels + "</CHANDESCRIPTIONS>";
}

/// In the new process no file may grow beyond 20,000 bytes.
void limit_files() {
    signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{20'000, 20'000};
    setrlimit(RLIMIT_FSIZE, &limit);
}

class CommandLimits : public testing::Test {
protected:
    CommandLimits() {
        folder.write("in.xml", large_document());
        folder.write("old.txt", "old");
    }
    std::ptrdiff_t files() const {
        const std::filesystem::directory_iterator entries(folder.path("."));
        return std::distance(begin(entries), end(entries));
    }

    command_folder folder;
};

// A table once came out cut, without a word
TEST_F(CommandLimits, KeepTheOldFileWhenTheNewOneBecomesTooLarge) {
    for (const char *form : {"table", "summary", "chandescriptions", "daqvariables"}) {
        const command_result seen =
            folder.run({"convert", "in.xml", "--to", form, "-o", "old.txt"}, "", limit_files);
        EXPECT_EQ(seen.status, 3) << form;
        EXPECT_TRUE(seen.out.empty()) << form;
        EXPECT_TRUE(seen.err.ends_with(": File too large\n")) << seen.err;
        EXPECT_TRUE(folder.text("old.txt") == "old") << form;
        EXPECT_EQ(files(), 2) << form;
    }
}

TEST_F(CommandLimits, LeaveNoNewFileThatWouldBecomeTooLarge) {
    EXPECT_EQ(
        folder.run({"convert", "in.xml", "--to", "daqvariables", "-o", "new.txt"}, "", limit_files).status,
        3);
    EXPECT_EQ(files(), 2);
}

// Not even root makes a file in this one
TEST_F(CommandLimits, AreToldOfAFolderThatTakesNoFile) {
    const command_result seen = folder.run({"convert", "in.xml", "--to", "table", "-o", "/proc/out.txt"});
    EXPECT_EQ(seen.status, 3);
    EXPECT_EQ(seen.out, "");
    EXPECT_TRUE(seen.err.starts_with("zeb5xml: /proc/out.txt: ")) << seen.err;
}

} // namespace
