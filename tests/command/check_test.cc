/// The command line of `check`: formats, options and exit statuses.

#include <filesystem>
#include <sys/resource.h>

#include <gtest/gtest.h>

#include "support/command_runner.h"

namespace {

const char faulty[] = "<CHANDESCRIPTIONS>\n"
                      "<CHANNEL><PROP>P</PROP><NAME>N</NAME><EVTYPE>268435456</EVTYPE></CHANNEL>\n"
                      "<CHANNEL><PROP>Q</PROP><NAME>N</NAME>\n"
                      "  <UNTS>V</UNTS><SIZE>2O48</SIZE>\n"
                      "</CHANNEL>\n"
                      "</CHANDESCRIPTIONS>\n";
const char noted[] = "<CHANDESCRIPTIONS><CHANNEL><PROP>P</PROP></CHANNEL></CHANDESCRIPTIONS>";

const std::string note_line =
    "faulty.xml:2:38: note: channel 'P': <EVTYPE>: no name is known for event type 28 [unnamed-type]\n";
const std::string unknown_line =
    "faulty.xml:4:3: warning: channel 'Q': no reader knows <UNTS>; did you mean <UNITS>? [unknown-element]\n";
const std::string tail_line =
    "faulty.xml:4:17: error: channel 'Q': <SIZE>: 'O48' after the number is ignored; "
    "the reader keeps 2 [number-tail]\n";

class Check : public testing::Test {
protected:
    Check() {
        folder.write("faulty.xml", faulty);
        folder.write("noted.xml", noted);
        folder.write("clean.xml", "<BMR/>");
    }
    command_result run(std::vector<std::string> arguments, const std::string &input = "") const {
        arguments.insert(arguments.begin(), "check");
        return folder.run(arguments, input);
    }

    command_folder folder;
};

TEST_F(Check, TellsOneLineForEachFinding) {
    EXPECT_EQ(run({"faulty.xml", "clean.xml"}),
              (command_result{1, note_line + unknown_line + tail_line,
                              "zeb5xml: 2 files checked: 1 error, 1 warning, 1 note\n"}));
    EXPECT_EQ(run({"clean.xml"}), (command_result{0, "", "zeb5xml: 1 file checked: nothing found\n"}));
}

TEST_F(Check, NotesFailOnlyWhenItIsStrict) {
    const std::string line =
        "noted.xml:1:19: note: channel 'P': there is no <NAME>: a writer names the channel "
        "'!!!UNDEFINED!!!' [missing-name]\n";
    const std::string summary = "zeb5xml: 1 file checked: 0 errors, 0 warnings, 1 note\n";
    EXPECT_EQ(run({"noted.xml"}), (command_result{0, line, summary}));
    EXPECT_EQ(run({"noted.xml", "--strict"}), (command_result{1, line, summary}));
}

TEST_F(Check, SelectsAndIgnoresRules) {
    const std::string one_error = "zeb5xml: 1 file checked: 1 error, 0 warnings, 0 notes\n";
    EXPECT_EQ(run({"faulty.xml", "--select", "number-tail,doctype"}),
              (command_result{1, tail_line, one_error}));
    EXPECT_EQ(run({"--ignore", "unnamed-type,unknown-element", "faulty.xml"}),
              (command_result{1, tail_line, one_error}));
    EXPECT_EQ(run({"faulty.xml", "--select", "doctype"}),
              (command_result{0, "", "zeb5xml: 1 file checked: nothing found\n"}));
    EXPECT_EQ(run({"faulty.xml", "--ignore", "number-tial"}),
              (command_result{2, "",
                              "zeb5xml: --ignore: no such rule: number-tial; did you mean 'number-tail'?\n"
                              "Try: zeb5xml check --help\n"}));
}

TEST_F(Check, RefusesAListOfRulesWithAGap) {
    for (const char *list : {",doctype", "doctype,", "doctype,,not-xml"})
        EXPECT_EQ(run({"clean.xml", "--select", list}),
                  (command_result{2, "",
                                  "zeb5xml: --select: the name of a rule is missing\n"
                                  "Try: zeb5xml check --help\n"}))
            << list;
}

TEST_F(Check, TellsOfAnEmptyDocumentOnly) {
    folder.write("empty.xml", "");
    EXPECT_EQ(
        run({"empty.xml", "-"}),
        (command_result{1,
                        "empty.xml:1:1: error: the document is empty: no reader takes it [not-xml]\n"
                        "standard input:1:1: error: the document is empty: no reader takes it [not-xml]\n",
                        "zeb5xml: 2 files checked: 2 errors, 0 warnings, 0 notes\n"}));
}

TEST_F(Check, PrintsJson) {
    folder.write("a\"b\n.xml", "<OTHER/>");
    EXPECT_EQ(
        run({"--format", "json", "a\"b\n.xml", "faulty.xml", "--ignore", "unknown-element"}),
        (command_result{
            1,
            "[\n"
            "  {\"file\": \"a\\\"b\\n.xml\", \"line\": 1, \"column\": 1, \"severity\": \"error\", "
            "\"rule\": "
            "\"wrong-root\", \"message\": \"the root <OTHER> is none of CHANDESCRIPTIONS, DAQvariables, BMR "
            "and "
            "ENVINDEXDICT, and no camera feature is in it\"},\n"
            "  {\"file\": \"faulty.xml\", \"line\": 2, \"column\": 38, \"severity\": \"note\", \"rule\": "
            "\"unnamed-type\", \"message\": \"channel 'P': <EVTYPE>: no name is known for event type 28\"},\n"
            "  {\"file\": \"faulty.xml\", \"line\": 4, \"column\": 17, \"severity\": \"error\", \"rule\": "
            "\"number-tail\", \"message\": \"channel 'Q': <SIZE>: 'O48' after the number is ignored; the "
            "reader "
            "keeps 2\"}\n"
            "]\n",
            ""}));
    EXPECT_EQ(run({"--format", "json", "clean.xml"}), (command_result{0, "[\n]\n", ""}));
}

TEST_F(Check, PrintsCommandsOfAWorkflow) {
    folder.write("50%,a.xml", "<BMR a='100%'/>");
    EXPECT_EQ(
        run({"--format", "github", "50%,a.xml", "faulty.xml"}),
        (command_result{
            1,
            "::warning file=50%25%2Ca.xml,line=1,col=6,title=ignored-attribute::no reader looks at the "
            "attribute 'a' of <BMR>\n"
            "::notice file=faulty.xml,line=2,col=38,title=unnamed-type::channel 'P': <EVTYPE>: no name is "
            "known for event type 28\n"
            "::warning file=faulty.xml,line=4,col=3,title=unknown-element::channel 'Q': no reader knows "
            "<UNTS>; did you mean <UNITS>?\n"
            "::error file=faulty.xml,line=4,col=17,title=number-tail::channel 'Q': <SIZE>: 'O48' after the "
            "number is ignored; the reader keeps 2\n",
            ""}));
}

TEST_F(Check, TellsFilesThatItCannotReadAndGoesOn) {
    std::filesystem::create_directory(folder.path("folder"));
    EXPECT_EQ(run({"missing.xml", "folder", "noted.xml", "--ignore", "unreadable,missing-name"}),
              (command_result{2,
                              "missing.xml:1:1: error: No such file or directory [unreadable]\n"
                              "folder:1:1: error: Is a directory [unreadable]\n",
                              "zeb5xml: 3 files checked: 2 errors, 0 warnings, 0 notes\n"}));
}

TEST_F(Check, ReadsStandardInputAndUtf16FromIt) {
    std::string wide = "\xff\xfe";
    for (const char c : std::string("<BMR>\n<X/></BMR>"))
        wide += std::string{c, '\0'};
    EXPECT_EQ(run({"-"}, wide),
              (command_result{1, "standard input:2:1: warning: no reader knows <X> [unknown-element]\n",
                              "zeb5xml: 1 file checked: 0 errors, 1 warning, 0 notes\n"}));
}

TEST_F(Check, PrintsOnlyWholeCharactersThatATerminalShows) {
    std::string umlauts,
        cut = "<CHANDESCRIPTIONS><CHANNEL><PROP>P\xc2\x9b\xe2\x80\xae</PROP><NAME>N</NAME><SUBSYSTEM>";
    for (int i = 0; i < 32; ++i)
        cut += "\xc3\xa4";
    for (int i = 0; i < 9; ++i)
        umlauts += "\xc3\xa4";
    folder.write("cut.xml", cut + "</SUBSYSTEM></CHANNEL></CHANDESCRIPTIONS>");
    EXPECT_EQ(run({"cut.xml", "--select", "cut-field"}),
              (command_result{
                  1,
                  "cut.xml:1:58: error: channel 'P\\xC2\\x9B\\xE2\\x80\\xAE': the text of <SUBSYSTEM> has 64 "
                  "bytes, of which 63 are kept: it ends with '" +
                      umlauts + "\\xC3' [cut-field]\n",
                  "zeb5xml: 1 file checked: 1 error, 0 warnings, 0 notes\n"}));
}

TEST_F(Check, RefusesWhatHasNoEndAtOnce) {
    folder.write("long.xml", "<BMR>");
    std::filesystem::resize_file(folder.path("long.xml"), (std::uintmax_t{128} << 20) + 1);
    EXPECT_EQ(
        run({"/dev/zero", "long.xml"}),
        (command_result{2,
                        "/dev/zero:1:1: error: it begins with NUL bytes, as no document does [unreadable]\n"
                        "long.xml:1:1: error: longer than 128 MiB [unreadable]\n",
                        "zeb5xml: 2 files checked: 2 errors, 0 warnings, 0 notes\n"}));
}

std::string repeated(const std::string &text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i)
        all += text;
    return all;
}

/// In the new process, work of more than this time ends it.
void limit_time() {
    const rlimit seconds{20, 20};
    setrlimit(RLIMIT_CPU, &seconds);
}

// These took minutes: a long value was looked at again for each finding or comment
TEST_F(Check, NeedsTimeInProportionToTheDocument) {
    const std::string name(700'000, 'n'), digits(500'000, '0');
    const std::string documents[] = {"<CHANDESCRIPTIONS><CHANNEL><NAME>" + name + "</NAME>" +
                                         repeated("<q/>", 75'000) + "</CHANNEL></CHANDESCRIPTIONS>",
                                     "<DAQvariables><DaqBits><orvin>P</orvin><bitTitle bit=\"" + digits +
                                         "\">" + repeated("<!---->", 70'000) +
                                         "</bitTitle></DaqBits></DAQvariables>"};
    for (const std::string &document : documents) {
        folder.write("long.xml", document);
        EXPECT_EQ(folder.run({"check", "long.xml", "--select", "doctype"}, "", limit_time),
                  (command_result{0, "", "zeb5xml: 1 file checked: nothing found\n"}))
            << document.substr(0, 60);
    }
}

TEST_F(Check, WantsAFileUnlessItListsItsRules) {
    EXPECT_EQ(run({}), (command_result{2, "", "zeb5xml: FILE is required\nTry: zeb5xml check --help\n"}));
    const command_result rules = run({"--rules"});
    EXPECT_EQ(rules.status, 0);
    EXPECT_EQ(rules.err, "");
    EXPECT_TRUE(
        rules.out.starts_with("unreadable (error): the file cannot be opened or read, or is longer than "
                              "128 MiB\n    zeb5xml check missing.xml\n"))
        << rules.out;
    EXPECT_NE(rules.out.find("\ncut-field (error): the text is longer than its field\n"
                             "    <UNITS>millimetres of water</UNITS>\n"),
              std::string::npos);
}

TEST_F(Check, FindsNothingInTheExamples) {
    std::vector<std::string> files;
    for (const auto &file : std::filesystem::directory_iterator(EXAMPLES_DIR))
        if (file.path().extension() == ".xml")
            files.push_back(file.path());
    EXPECT_EQ(files.size(), 5U);
    EXPECT_EQ(run(files), (command_result{0, "", "zeb5xml: 5 files checked: nothing found\n"}));
}

} // namespace
