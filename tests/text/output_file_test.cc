/// The file that a writer fills: it is opened or that is reported, and it never takes the place of a standard
/// stream.

#include "text/output_file.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "parse_chan_descr.h"
#include "parse_env_index_dictionary.h"
#include "support/capture.h"
#include "support/test_files.h"

namespace {

TEST(OutputFile, IsTruncatedAndFilled) {
    const temporary_file file("before");
    const captured seen =
        capture([&] { std::fputs("text", zeb5::open_output("w()", file.path().c_str()).get()); });
    EXPECT_EQ(file.text(), "text");
    EXPECT_EQ(seen.out + seen.err, "");
}

TEST(OutputFile, IsReportedWhenItCannotBeOpened) {
    const temporary_folder folder;
    const std::string path = folder / "none/file";
    const captured seen = capture([&] { EXPECT_EQ(zeb5::open_output("w()", path.c_str()), nullptr); });
    EXPECT_EQ(seen.out, "w() failed to open file: '" + path + "'\n");
    EXPECT_EQ(seen.err, "fopen: No such file or directory\n");
}

/// Runs in a child whose standard streams are closed, but for those before `first`.
template <class Run> void run_without_streams(int first, Run run) {
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        if (first > STDOUT_FILENO && !std::freopen("/dev/null", "w", stdout))
            _exit(1);
        for (int fd = first; fd <= STDERR_FILENO; ++fd)
            close(fd);
        run();
        std::fflush(nullptr);
        _exit(0);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

TEST(OutputFile, HasNoMessagesOfStandardStreamsThatAreClosed) {
    const temporary_file channels, dictionary;
    std::vector<chan_descr_2010 *> no_channels;
    std::vector<zeb5_env_index_dictionary_entry *> no_entries;
    for (int first = 0; first <= STDERR_FILENO; ++first) {
        run_without_streams(first, [&] {
            std::string channel_path = channels.path(), dictionary_path = dictionary.path();
            dump_chan_desr(&no_channels, channel_path.data(), 2, 1, -1, nullptr, nullptr);
            dump_env_index_dict(&no_entries, dictionary_path.data(), 1, -1, nullptr);
        });
        EXPECT_EQ(channels.text(), "<?xml version=\"1.0\" encoding=\"ISO-8859-1\" ?>\n<DAQvariables>\n"
                                   "</DAQvariables>\n\n")
            << first;
        EXPECT_EQ(dictionary.text(), "") << first;
    }
}

} // namespace
