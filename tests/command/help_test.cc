/// The help of the subcommands.

#include <gtest/gtest.h>

#include "support/command_runner.h"

namespace {

/// The help of a subcommand; of the command itself when it has no name.
std::string help_of(const std::string &subcommand) {
    const command_folder folder;
    const command_result said =
        subcommand.empty() ? folder.run({"--help"}) : folder.run({subcommand, "--help"});
    EXPECT_EQ(said.status, 0) << subcommand;
    EXPECT_EQ(said.err, "") << subcommand;
    return said.out;
}

/// The part of a text behind a mark, up to the next end mark; all that follows when no end mark is given.
std::string behind(const std::string &text, const std::string &mark, const std::string &end = "") {
    const std::size_t at = text.find(mark);
    if (at == text.npos)
        return "no " + mark + " in " + text;
    const std::size_t from = at + mark.size();
    return end.empty() ? text.substr(from) : text.substr(from, text.find(end, from) - from);
}

/// The lines below "Exit status:".
std::string statuses_of(const std::string &subcommand) {
    return behind(help_of(subcommand), "\nExit status:\n");
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
        {"manual", "  0  done" + usage},
        // as of diff(1)
        {"diff", "  0  no difference\n"
                 "  1  differences\n"
                 "  2  wrong command line, or a document is missing, cannot be read without "
                 "errors or is of another kind\n"}};
    for (const auto &[name, statuses] : expected)
        EXPECT_EQ(statuses_of(name), statuses + last) << name;
    EXPECT_EQ(statuses_of(""),
              of_document +
                  ", or a value would be lost;\n"
                  "     `select` knows no channel of the name, `diff` found a difference, `check` an "
                  "error or a warning\n"
                  "  2  wrong command line; `diff` or `check` could not read a document\n" +
                  last);
}

// The library that prints the arguments words what is above them
TEST(CommandHelp, EndsWithDetailsExamplesAndStatuses) {
    EXPECT_EQ(behind(help_of("mask"), "Print this help message and exit\n"), R"(
A number is a mask as it stands in EVTYPE or DTYPE, decimal or hexadecimal; after --, it may be
negative, as documents write DTYPE. Names are separated by commas. Without MASK, all types are
listed.

Examples:
  zeb5xml mask dtype 0x80000200
      Names of the block types in a DTYPE
  zeb5xml mask event BOR,EOR
      The number for EVTYPE

Exit status:
  0  done
  2  wrong command line
  3  output could not be written, or the system refused memory
A reader that closes the pipe early ends the command silently.
)");
}

// It is made from the same rows
TEST(CommandHelp, IsInTheManual) {
    const command_folder folder;
    const command_result page = folder.run({"manual"});
    EXPECT_EQ(page.status, 0);
    EXPECT_EQ(page.err, "");
    EXPECT_EQ(behind(page.out, "\n.Ss mask\n", "\n.Ss "),
              R"(Turn masks of event types and data types into names, and names into masks.
.Pp
A number is a mask as it stands in EVTYPE or DTYPE, decimal or hexadecimal;
after \-\-, it may be
negative, as documents write DTYPE.
Names are separated by commas.
Without MASK, all types are
listed.
.Bl -tag -width indent
.It Ar KIND
event (EVTYPE) or dtype (DTYPE).
One of event, dtype.
.It Ar MASK
Masks, or names of types.
.El
.Pp
Exit status:
.Bl -tag -width Ds -compact
.It 0
done.
.It 2
wrong command line.
.It 3
output could not be written, or the system refused memory.
.El
.Pp
Names of the block types in a DTYPE:
.Dl zeb5xml mask dtype 0x80000200
.Pp
The number for EVTYPE:
.Dl zeb5xml mask event BOR,EOR)");
    EXPECT_EQ(behind(behind(page.out, "\n.Ss check\n"), "\nExit status:\n", ".El\n"),
              R"(.Bl -tag -width Ds -compact
.It 0
nothing was found but notes.
.It 1
errors or warnings were found (with \-\-strict, notes, too).
.It 2
wrong command line, or a file could not be checked.
.It 3
output could not be written, or the system refused memory.
)");
}

} // namespace
