/// The help of the subcommands about records.

#include <gtest/gtest.h>

#include "support/command_runner.h"

namespace {

TEST(CommandHelp, GivesEveryExitStatus) {
    const command_folder folder;
    for (const char *subcommand : {"export", "canonical", "diff", "merge", "mask"}) {
        const command_result said = folder.run({subcommand, "--help"});
        EXPECT_EQ(said.status, 0) << subcommand;
        EXPECT_EQ(said.err, "") << subcommand;
        for (const char *status : {"\n  0  ", "\n  1  ", "\n  2  ", "\n  3  "})
            EXPECT_NE(said.out.find(status), std::string::npos) << subcommand << status;
    }
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
