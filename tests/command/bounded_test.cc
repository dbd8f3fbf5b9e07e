/// What the command does with endless, huge and single-use sources: it reads on only as long as there is
/// hope, and it holds no more than the records.

#include <csignal>
#include <filesystem>
#include <sys/resource.h>
#include <sys/stat.h>

#include <gtest/gtest.h>

#include "support/command_runner.h"
#include "support/sanitized.h"

namespace {

const char no_root[] = "invalid document structure\nscanFirst() failed\n";

/// In the new process no more memory than this, and no file beyond 10 MB.
void limit_memory() {
    const rlimit memory{200'000'000, 200'000'000}, file{10'000'000, 10'000'000};
    if (!is_sanitized) // shadow memory needs far more
        setrlimit(RLIMIT_AS, &memory);
    setrlimit(RLIMIT_FSIZE, &file);
}

TEST(BoundedCommand, GivesUpAnEndlessSourceAtItsFirstBytes) {
    const command_folder folder;
    for (const std::vector<std::string> &start : {std::vector<std::string>{"show"},
                                                  {"export"},
                                                  {"canonical"},
                                                  {"convert", "--to", "table"},
                                                  {"merge"}}) {
        std::vector<std::string> arguments = start;
        arguments.push_back("/dev/zero");
        EXPECT_EQ(folder.run(arguments, "", limit_memory),
                  (command_result{1, "",
                                  "Fatal Error at (file /dev/zero, line 1, char 1): " + std::string(no_root) +
                                      "zeb5xml: /dev/zero: no root element could be read\n"}))
            << start[0];
    }
    EXPECT_EQ(
        folder.run({"show", "-"}, "",
                   [] {
                       limit_memory();
                       dup2(open("/dev/zero", O_RDONLY), STDIN_FILENO);
                   }),
        (command_result{1, "",
                        "Fatal Error at (file standard input, line 1, char 1): " + std::string(no_root) +
                            "zeb5xml: standard input: no root element could be read\n"}));
}

TEST(BoundedCommand, RefusesASparseFileAtItsFirstHole) {
    const command_folder folder;
    folder.write("sparse.xml", "<BMR>");
    std::filesystem::resize_file(folder.path("sparse.xml"), std::uintmax_t{2} << 30);
    const std::string report =
        "Fatal Error at (file sparse.xml, line 1, char 6): input ended before all started tags "
        "were ended; last tag started is 'BMR'\n";
    EXPECT_EQ(folder.run({"show", "sparse.xml"}, "", limit_memory),
              (command_result{
                  1, "", report + "zeb5xml: sparse.xml: not read without errors: only 0 entries listed\n"}));
    EXPECT_EQ(folder.run({"check", "sparse.xml"}, "", limit_memory),
              (command_result{1, report + "sparse.xml: event list, 0 entries, reader result 1\n", ""}));
}

/// A channel of 300 bits that stands in the list 10,000 times: its listing takes more than 100 MB.
TEST(BoundedCommand, HoldsNoListing) {
    std::string bits, properties;
    for (int i = 0; i < 300; ++i)
        bits += "<BIT>1</BIT>";
    for (int i = 0; i < 10'000; ++i)
        properties += "<PROP>A</PROP>";
    const command_folder folder;
    folder.write("in.xml",
                 "<CHANDESCRIPTIONS><CHANNEL>" + bits + properties + "</CHANNEL></CHANDESCRIPTIONS>");
    for (const char *command : {"show", "export", "canonical"})
        EXPECT_EQ(folder.run({command, "in.xml"}, "",
                             [] {
                                 limit_memory();
                                 dup2(open("/dev/null", O_WRONLY), STDOUT_FILENO);
                             }),
                  (command_result{0, "", ""}))
            << command;
}

// Every kind of document can come through a pipe, which can be read only once

TEST(BoundedCommand, ReadsEveryKindFromAPipe) {
    struct kind {
        const char *document;
        const char *summary;
    };
    const kind kinds[] = {
        {"<CHANDESCRIPTIONS><CHANNEL><PROP>P</PROP></CHANNEL></CHANDESCRIPTIONS>",
         "channel descriptions, 1 channel"},
        {"<BMR/>", "event list, 0 entries"},
        {"<ENVINDEXDICT/>", "env index dictionary, 0 entries"},
        {"<C><Integer Name=\"Gain\"/></C>", "camera file, 1 feature"},
    };
    const command_folder folder;
    for (const kind &row : kinds) {
        int ends[2];
        ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
        const std::string text = row.document;
        ASSERT_EQ(write(ends[1], text.data(), text.size()), static_cast<ssize_t>(text.size()));
        close(ends[1]);
        EXPECT_EQ(folder.run({"check", "-"}, "", [&] { dup2(ends[0], STDIN_FILENO); }),
                  (command_result{0, "standard input: " + std::string(row.summary) + ": ok\n", ""}));
        close(ends[0]);
    }
}

TEST(BoundedCommand, ReadsStandardInputFromWhereItStands) {
    const command_folder folder;
    EXPECT_EQ(folder.run({"check", "-"}, "a line\n<BMR/>", [] { lseek(STDIN_FILENO, 7, SEEK_SET); }),
              (command_result{0, "standard input: event list, 0 entries: ok\n", ""}));
}

TEST(BoundedCommand, SaysWhereATemporaryFileCannotBeMade) {
    const command_folder folder;
    const command_result seen =
        folder.run({"check", "/dev/null"}, "", [] { setenv("TMPDIR", "/nowhere", 1); });
    EXPECT_EQ(seen.status, 3);
    EXPECT_EQ(seen.out, "");
    EXPECT_TRUE(seen.err.starts_with("zeb5xml: /nowhere/zeb5xml.")) << seen.err;
    EXPECT_TRUE(seen.err.ends_with(": No such file or directory\n")) << seen.err;
}

TEST(BoundedCommand, EndsQuietlyWhenNobodyReadsALongListing) {
    std::string channels;
    for (int i = 0; i < 5000; ++i)
        channels += "<CHANNEL><PROP>P" + std::to_string(i) + "</PROP></CHANNEL>";
    const command_folder folder;
    folder.write("in.xml", "<CHANDESCRIPTIONS>" + channels + "</CHANDESCRIPTIONS>");
    for (const char *command : {"show", "export", "canonical"})
        EXPECT_EQ(folder.run({command, "in.xml"}, "",
                             [] {
                                 int ends[2];
                                 if (pipe(ends) != 0)
                                     _exit(126);
                                 dup2(ends[1], STDOUT_FILENO);
                                 close(ends[0]);
                                 close(ends[1]);
                             }),
                  (command_result{-SIGPIPE, "", ""}))
            << command;
}

} // namespace
