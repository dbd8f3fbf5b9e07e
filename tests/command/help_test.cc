/// The help of the subcommands about records.

#include <gtest/gtest.h>

#include "support/command_runner.h"

namespace {

TEST(CommandHelp, GivesEveryExitStatus) {
    const command_folder folder;
    for (const char *subcommand : {"export", "canonical", "diff", "merge", "catalogue"}) {
        const command_result said = folder.run({subcommand, "--help"});
        EXPECT_EQ(said.status, 0) << subcommand;
        EXPECT_EQ(said.err, "") << subcommand;
        for (const char *status : {"\n  0  ", "\n  1  ", "\n  2  ", "\n  3  "})
            EXPECT_NE(said.out.find(status), std::string::npos) << subcommand << status;
    }
}

/// The lines below "Exit status:".
std::string statuses_of(const std::string &help) {
    const std::size_t at = help.find("\nExit status:\n");
    return at == help.npos ? "" : help.substr(at + 14);
}

TEST(CommandHelp, TellsOfEachSubcommandOnlyWhatItGives) {
    const std::string last = "  3  output could not be written, or the system refused memory\n"
                             "A reader that closes the pipe early ends the command silently.\n";
    const std::string of_document =
        "  0  done\n"
        "  1  a document is missing, cannot be read without errors or is of the wrong kind";
    const std::string usage = "\n  2  wrong command line\n";
    const std::pair<const char *, std::string> expected[] = {
        {"show", of_document + usage},
        {"export", of_document + usage},
        {"canonical", of_document + usage},
        {"catalogue", of_document + usage},
        {"convert", of_document + ", or a value would be lost" + usage},
        {"merge", of_document + ", or a value would be lost" + usage},
        {"select", of_document + ", or no channel has the name asked for" + usage},
        {"check", "  0  nothing was found but notes\n"
                  "  1  errors or warnings were found (with --strict, notes, too)\n"
                  "  2  wrong command line, or a file could not be checked\n"},
        {"mask", "  0  done" + usage},
        {"completion", "  0  done" + usage},
        {"manual", "  0  done" + usage}};
    const command_folder folder;
    for (const auto &[name, statuses] : expected)
        EXPECT_EQ(statuses_of(folder.run({name, "--help"}).out), statuses + last) << name;
    EXPECT_EQ(statuses_of(folder.run({"--help"}).out),
              of_document +
                  ", or a value would be lost;\n"
                  "     `select` knows no channel of the name, `diff` found a difference, `check` an "
                  "error or a warning\n"
                  "  2  wrong command line; `diff` or `check` could not read a document\n" +
                  last);
}

// The manual page is made from the same rows
TEST(CommandHelp, HasTheSameStatusesInTheManual) {
    const command_folder folder;
    const std::string page = folder.run({"manual"}).out;
    EXPECT_NE(page.find(".Pp\nExit status:\n.Bl -tag -width Ds -compact\n"
                        ".It 0\nnothing was found but notes.\n"
                        ".It 1\nerrors or warnings were found (with \\-\\-strict, notes, too).\n"
                        ".It 2\nwrong command line, or a file could not be checked.\n"
                        ".It 3\noutput could not be written, or the system refused memory.\n"
                        ".El\n"),
              std::string::npos)
        << page;
}

// diff follows diff(1), not the other subcommands
TEST(CommandHelp, OfDiffHasStatusesOfItsOwn) {
    const command_folder folder;
    const std::string help = folder.run({"diff", "--help"}).out;
    EXPECT_TRUE(help.ends_with("Exit status:\n"
                               "  0  no difference\n"
                               "  1  differences\n"
                               "  2  wrong command line, or a document is missing, cannot be read without "
                               "errors or is of another kind\n"
                               "  3  output could not be written, or the system refused memory\n"
                               "A reader that closes the pipe early ends the command silently.\n"))
        << help;
}

} // namespace
