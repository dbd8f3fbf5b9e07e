/// Destinations that take only a part of the output: pipes that nobody reads, files that may not grow. The
/// writers report a failed write to a descriptor, and no other failed write.

#include <csignal>
#include <fcntl.h>
#include <functional>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "support/capture.h"
#include "support/channel_records.h"
#include "support/env_dictionary_records.h"
#include "support/test_files.h"

namespace {

/// What writes; the descriptor may be -1 and the path null.
using writer = std::function<int(char *path, int fd)>;

struct writer_row {
    const char *name;
    writer write;
};

/// Every writer with a list of 2,000 records, in the mode that writes XML to a file and a descriptor.
struct full_writers {
    full_writers() {
        for (int i = 0; i < 2000; ++i) {
            const std::string name = "PROPERTY/" + std::to_string(i);
            channels.add(make_channel(name.c_str()));
            classic.add(i, name);
            recent.add(i, name);
        }
    }

    channel_list channels;
    dictionary<classic_layout> classic;
    dictionary<layout_2010> recent;
    const writer_row rows[4] = {
        {"channels",
         [this](char *path, int fd) {
             return dump_chan_desr(&channels.records, path, 2, 0, fd, nullptr, nullptr);
         }},
        {"DAQ variables",
         [this](char *path, int fd) {
             return dump_chan_desr(&channels.records, path, 2, 1, fd, nullptr, nullptr);
         }},
        {"classic dictionary",
         [this](char *path, int fd) { return classic_layout::dump(&classic.entries, path, 2, fd, nullptr); }},
        {"2010 dictionary",
         [this](char *path, int fd) { return layout_2010::dump(&recent.entries, path, 2, fd, nullptr); }},
    };
};

/// The result of `write` in a process of its own that ignores the signals of broken pipes and large files.
int result_apart(const std::function<int()> &write, rlim_t largest_file) {
    const pid_t child = fork();
    if (child == 0) {
        signal(SIGPIPE, SIG_IGN);
        signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{largest_file, largest_file};
        setrlimit(RLIMIT_FSIZE, &limit);
        const silence quiet;
        _exit(write());
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(LimitedDestinations, OfNobodyAreAFailedWrite) {
    const full_writers writers;
    for (const writer_row &row : writers.rows) {
        int ends[2];
        ASSERT_EQ(pipe(ends), 0);
        close(ends[0]);
        EXPECT_EQ(result_apart([&] { return row.write(nullptr, ends[1]); }, RLIM_INFINITY), 2) << row.name;
        close(ends[1]);
    }
}

TEST(LimitedDestinations, ThatAreFilesAreCutWithoutAWord) {
    const full_writers writers;
    for (const writer_row &row : writers.rows) {
        temporary_file whole, cut;
        EXPECT_EQ(result_apart([&] { return row.write(whole.c_path(), -1); }, RLIM_INFINITY), 0) << row.name;
        EXPECT_EQ(result_apart([&] { return row.write(cut.c_path(), -1); }, 8192), 0) << row.name;
        EXPECT_GT(whole.text().size(), 8192u) << row.name;
        EXPECT_EQ(cut.text().size(), 8192u) << row.name;
    }
}

// The first write puts out 8,192 bytes, so it does not fail
TEST(LimitedDestinations, ThatAreDescriptorsFailOnlyWhenNothingGetsThrough) {
    const full_writers writers;
    for (const writer_row &row : writers.rows) {
        const temporary_file target;
        const int fd = open(target.path().c_str(), O_WRONLY | O_CLOEXEC);
        EXPECT_EQ(result_apart([&] { return row.write(nullptr, fd); }, 8192), 0) << row.name;
        EXPECT_EQ(target.text().size(), 8192u) << row.name;
        EXPECT_EQ(result_apart([&] { return row.write(nullptr, fd); }, 8192), 2) << row.name;
        close(fd);
    }
}

} // namespace
