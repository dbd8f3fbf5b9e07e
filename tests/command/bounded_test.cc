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
    EXPECT_EQ(
        folder.run({"canonical", "sparse.xml"}, "", limit_memory),
        (command_result{1, "", report + "zeb5xml: sparse.xml: not read without errors: nothing written\n"}));
    EXPECT_EQ(folder.run({"convert", "sparse.xml", "--to", "table"}, "", limit_memory),
              (command_result{1, "", "zeb5xml: sparse.xml: is an event list, which has no other form\n"}));
}

/// A channel of 300 bits that stands in the list 10,000 times: its listing takes more than 100 MB.
TEST(BoundedCommand, HoldsNoListing) {
    std::string bits, properties;
    for (int i = 0; i < 300; ++i)
        bits += "<BIT>1</BIT>";
    const int times = is_sanitized ? 500 : 10'000; // memory is not limited under a sanitizer
    for (int i = 0; i < times; ++i)
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
        const char *cells; // of the table
    };
    const kind kinds[] = {
        {"<CHANDESCRIPTIONS><CHANNEL><PROP>P</PROP></CHANNEL></CHANDESCRIPTIONS>",
         "prop_name\tdaq_name\tstream\tev_type\tev_type_names\tdtype\tdtype_names\tcount\tdb_key\tprop_"
         "desc\tunits\t"
         "max_size\tsb_name\tset_point\tsubsystem\tbits\tdims\tlatin_1\nP\t\t0\t0\t\t0\t\t0\t-"
         "1\t\t\t1\t\t0\t\t[]\t[]\t\n"},
        {"<BMR><EVENT><TYPE>4</TYPE></EVENT></BMR>",
         "evtype\tevtype_name\ttimeup\ttimelow\ttmask\tpriority\tsb_list\tlatin_1\n4\tENV\t0\t0\t0\t0\t[]"
         "\t\n"},
        {"<ENVINDEXDICT/>", "index\tenv_prop\tenv_ch_abs_delta\tenv_ch_rel_delta\tlatin_1\n"},
        {"<C><Integer Name=\"Gain\"/></C>",
         "name\ttype\ttype_name\textension\ttooltip\tdescription\tlatin_1\nGain\t1\tInteger\t\t\t\t\n"},
    };
    const command_folder folder;
    for (const kind &row : kinds) {
        int ends[2];
        ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
        const std::string text = row.document;
        ASSERT_EQ(write(ends[1], text.data(), text.size()), static_cast<ssize_t>(text.size()));
        close(ends[1]);
        EXPECT_EQ(folder.run({"export", "-", "--format", "tsv"}, "", [&] { dup2(ends[0], STDIN_FILENO); }),
                  (command_result{0, row.cells, ""}));
        close(ends[0]);
    }
}

TEST(BoundedCommand, ReadsStandardInputFromWhereItStands) {
    const command_folder folder;
    EXPECT_EQ(folder.run({"export", "-", "--format", "json"}, "a line\n<BMR/>",
                         [] { lseek(STDIN_FILENO, 7, SEEK_SET); }),
              (command_result{0, "[\n]\n", ""}));
}

TEST(BoundedCommand, SaysWhereATemporaryFileCannotBeMade) {
    const command_folder folder;
    const command_result seen =
        folder.run({"show", "/dev/null"}, "", [] { setenv("TMPDIR", "/nowhere", 1); });
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
