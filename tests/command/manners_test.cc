/// What the command does for people: examples, colours, the nearest known word, completion and the manual
/// page.

#include "support/command_runner.h"

#include <algorithm>
#include <array>

#include <gtest/gtest.h>

namespace {

const char *const subcommands[] = {"show", "export", "convert", "canonical", "diff",       "merge",
                                   "mask", "select", "check",   "catalogue", "completion", "manual"};

class CommandManners : public testing::Test {
protected:
    command_result run(const std::vector<std::string> &arguments) const { return folder.run(arguments); }

    /// What a program writes that reads `input` in the folder; the test is skipped where it is not installed.
    std::string said_by(const std::string &program, const std::string &arguments, const std::string &input) {
        folder.write("input", input);
        const std::string line = "cd '" + folder.path("") + "' && { command -v " + program +
                                 " >/dev/null || exit 77; } && " + program + " " + arguments + " <input 2>&1";
        std::string said;
        FILE *const pipe = popen(line.c_str(), "r");
        std::array<char, 4096> block;
        while (const size_t count = fread(block.data(), 1, block.size(), pipe))
            said.append(block.data(), count);
        is_missing = WEXITSTATUS(pclose(pipe)) == 77;
        return said;
    }

    command_folder folder;
    bool is_missing = false;
};

TEST_F(CommandManners, EachHelpHasExamplesAndExitStatuses) {
    for (const char *name : subcommands) {
        const command_result help = run({name, "--help"});
        EXPECT_EQ(help.status, 0) << name;
        EXPECT_NE(help.out.find(std::string("\nExamples:\n  zeb5xml ") + name), std::string::npos)
            << help.out;
        EXPECT_NE(help.out.find("\nExit status:\n  0  "), std::string::npos) << name;
    }
}

TEST_F(CommandManners, AWrongWordIsAnsweredWithTheNearest) {
    struct wrong_line {
        std::vector<std::string> arguments;
        const char *message;
    };
    const wrong_line lines[] = {
        {{"shwo"}, "unknown subcommand: shwo; did you mean 'show'?\nTry: zeb5xml --help"},
        {{"show", "--evnt=4"}, "unknown option: --evnt=4; did you mean '--event'?\nTry: zeb5xml show --help"},
        {{"show", "--event", "UPDT", "x"},
         "--event: no event type: UPDT; did you mean 'UPD'?\nTry: zeb5xml show --help"},
        {{"select", "--block", "block_bmp", "x"},
         "--block: no block type: block_bmp; did you mean 'BLOCK_BPM'?\nTry: zeb5xml select --help"},
        {{"mask", "event", "HB,NORMLA"},
         "no event type: NORMLA; did you mean 'NORMAL'? `zeb5xml mask event` lists all"},
        {{"convert", "x", "--to", "daqvariable"},
         "--to: 'daqvariable' is none of chandescriptions, daqvariables, table, summary, envindexdict; "
         "did you mean 'daqvariables'?\nTry: zeb5xml convert --help"},
    };
    for (const wrong_line &line : lines)
        EXPECT_EQ(run(line.arguments),
                  (command_result{2, "", "zeb5xml: " + std::string(line.message) + "\n"}));
}

// Colours

const char before[] = "<CHANDESCRIPTIONS><CHANNEL><PROP>A</PROP><UNITS>V</UNITS></CHANNEL>"
                      "<CHANNEL><PROP>B</PROP></CHANNEL></CHANDESCRIPTIONS>";
const char after[] = "<CHANDESCRIPTIONS><CHANNEL><PROP>A</PROP><UNITS>A</UNITS></CHANNEL>"
                     "<CHANNEL><PROP>C</PROP></CHANNEL></CHANDESCRIPTIONS>";
const char in_colours[] = "\033[1mA\033[0m: units: \033[31m\"V\"\033[0m -> \033[32m\"A\"\033[0m\n"
                          "\033[31mB: removed\033[0m\n\033[32mC: added\033[0m\n";
const char without_colours[] = "A: units: \"V\" -> \"A\"\nB: removed\nC: added\n";

class Colours : public CommandManners {
protected:
    Colours() {
        folder.write("before.xml", before);
        folder.write("after.xml", after);
    }

    ~Colours() override {
        for (const int end : {terminal_, master_})
            if (end >= 0)
                close(end);
    }

    /// Returns false when the machine has none, as a bare root folder without /dev/pts.
    bool open_terminal() {
        master_ = posix_openpt(O_RDWR | O_NOCTTY);
        if (master_ >= 0 && grantpt(master_) == 0 && unlockpt(master_) == 0)
            terminal_ = open(ptsname(master_), O_RDWR | O_NOCTTY);
        return terminal_ >= 0;
    }

    /// What the command writes to the terminal.
    std::string on_terminal(const std::vector<std::string> &arguments, const char *no_color = "") const {
        folder.run(arguments, "", [&] {
            setenv("TERM", "xterm", 1);
            setenv("NO_COLOR", no_color, 1);
            dup2(terminal_, STDOUT_FILENO);
        });
        std::array<char, 4096> block;
        const ssize_t count = read(master_, block.data(), block.size());
        std::string text(block.data(), static_cast<size_t>(count));
        text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
        return text;
    }

private:
    int master_ = -1;
    int terminal_ = -1;
};

TEST_F(Colours, AreWhatTheOptionSays) {
    EXPECT_EQ(run({"diff", "before.xml", "after.xml", "--color", "always"}),
              (command_result{1, in_colours, ""}));
    for (const char *when : {"auto", "never"})
        EXPECT_EQ(run({"diff", "before.xml", "after.xml", "--color", when}),
                  (command_result{1, without_colours, ""}));
}

TEST_F(Colours, AreForATerminalUnlessNoColorIsSet) {
    if (!open_terminal())
        GTEST_SKIP() << "this machine has no terminals";
    EXPECT_EQ(on_terminal({"diff", "before.xml", "after.xml"}), in_colours);
    EXPECT_EQ(on_terminal({"diff", "before.xml", "after.xml"}, "1"), without_colours);
    EXPECT_EQ(on_terminal({"diff", "before.xml", "after.xml", "--color=never"}), without_colours);
    EXPECT_EQ(on_terminal({"diff", "before.xml", "after.xml", "--color=always"}, "1"), in_colours);
}

TEST_F(Colours, MarkTheHeadingsOfShow) {
    const std::string shown = run({"show", "before.xml", "after.xml", "--color", "always"}).out;
    EXPECT_EQ(shown.find("\033[1m==> before.xml <==\033[0m\n==="), 0u) << shown;
    EXPECT_NE(shown.find("\n\033[1m==> after.xml <==\033[0m\n==="), std::string::npos) << shown;
}

// Completion

TEST_F(CommandManners, BashCompletesWordsAndFiles) {
    folder.write("one file.xml", "");
    const std::string script = run({"completion", "bash"}).out +
                               "rm input\n"
                               "try() { COMP_WORDS=(zeb5xml \"$@\"); COMP_CWORD=$#; _zeb5xml;\n"
                               "        printf '<%s>' \"${COMPREPLY[@]}\"; echo; }\n"
                               "try co\ntry convert --to t\ntry convert --to = t\ntry convert --to =\n"
                               "try show --e\ntry show --event ''\ntry show o\ntry convert -o o\n"
                               "try mask e\ntry show show -\n";
    EXPECT_EQ(said_by("bash", "--norc", script),
              "<convert><completion>\n<table>\n<table>\n"
              "<chandescriptions><daqvariables><table><summary><envindexdict>\n"
              "<--event>\n<>\n<one file.xml>\n<one file.xml>\n"
              "<event>\n<--channel><--event><--stream><--subsystem><--color><--help>\n");
}

TEST_F(CommandManners, FishCompletesWordsAndFiles) {
    folder.write("one.xml", "");
    const std::string said =
        said_by("fish", "--no-config",
                run({"completion", "fish"}).out +
                    "for line in 'zeb5xml co' 'zeb5xml convert --to t' 'zeb5xml show --ev' 'zeb5xml show o' "
                    "'zeb5xml mask d'\n    complete -C $line\nend\n");
    if (is_missing)
        GTEST_SKIP() << "fish is not installed";
    EXPECT_EQ(said, "completion\tWrite what makes a shell complete the command's words\n"
                    "convert\tWrite channel descriptions or an env index dictionary in another form\n"
                    "table\tForm to write, see below\n"
                    "--event\tOnly channels or events of this event type, by name (ENV) or number (4)\n"
                    "one.xml\n"
                    "dtype\n");
}

TEST_F(CommandManners, ZshIsToldTheArguments) {
    const std::string script = "compdef() { }\n"
                               "_arguments() { print -rl -- \"$@\" }\n"
                               "_describe() { print -rl -- \"${(@P)2}\" }\n" +
                               run({"completion", "zsh"}).out +
                               "words=(zeb5xml merge ''); CURRENT=3; _zeb5xml\n"
                               "words=(zeb5xml mask ''); CURRENT=3; _zeb5xml\n";
    const std::string said = said_by("zsh", "-f", script);
    if (is_missing)
        GTEST_SKIP() << "zsh is not installed";
    EXPECT_EQ(
        said,
        "*:FILE:_files\n"
        "(-o --output)-o[File to write, replaced only when all is done (default\\: -)]:FILE:_files\n"
        "(-o --output)--output[File to write, replaced only when all is done (default\\: -)]:FILE:_files\n"
        "--force[What is set in a later document counts, and its bits and dimensions replace those before]\n"
        "--help[Print help]\n"
        ":KIND:(event dtype)\n*:MASK: \n--help[Print help]\n");
}

// The manual page

TEST_F(CommandManners, TheManualHasTheRowsOfEachSubcommand) {
    const std::string page =
        folder.run({"manual"}, "", [] { setenv("SOURCE_DATE_EPOCH", "1715671800", 1); }).out;
    EXPECT_EQ(page.find(".Dd May 14, 2024\n.Dt ZEB5XML 1\n.Os\n.Sh NAME\n.Nm zeb5xml\n"), 0u);
    for (const char *name : subcommands)
        EXPECT_NE(page.find(std::string("\n.Ss ") + name + "\n"), std::string::npos) << name;
    const size_t begin = page.find(".Ss canonical\n"), end = page.find(".Ss diff\n");
    EXPECT_EQ(page.substr(begin, end - begin),
              ".Ss canonical\n"
              "Write the records of a document so that equal ones give equal lines.\n"
              ".Pp\n"
              "One JSON object a line, as `zeb5xml export` writes it, sorted by identity:\n"
              "property, event type,\n"
              "index or name of the feature; those of one identity, by content.\n"
              "Bits, dimensions and server blocks\n"
              "are sorted alike.\n"
              "The date of a document and its dialect make no difference.\n"
              "To have git compare records instead of text:\n"
              ".Bd -literal -offset indent\n"
              "git config diff.zeb5xml.textconv \\(aqzeb5xml canonical\\(aq\n"
              "echo \\(aqchannels*.xml diff=zeb5xml\\(aq >> .gitattributes\n"
              ".Ed\n"
              ".Bl -tag -width indent\n"
              ".It Ar FILE\n"
              "Document of any kind; - is standard input.\n"
              ".El\n"
              ".Pp\n"
              "Exit status:\n"
              ".Bl -tag -width Ds -compact\n"
              ".It 0\n"
              "done.\n"
              ".It 1\n"
              "a document is missing, cannot be read without errors or is of the wrong kind.\n"
              ".It 2\n"
              "wrong command line.\n"
              ".It 3\n"
              "output could not be written, or the system refused memory.\n"
              ".El\n"
              ".Pp\n"
              "What changed, in the eyes of any tool that compares lines:\n"
              ".Dl zeb5xml canonical channels.xml | sha256sum\n");
}

TEST_F(CommandManners, TheManualIsGoodMdoc) {
    EXPECT_EQ(said_by("mandoc", "-T lint", run({"manual"}).out), "");
}

} // namespace
