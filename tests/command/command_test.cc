/// The command line of zeb5xml: help, exit statuses, reading, converting and where output goes.

#include "support/command_runner.h"

#include <algorithm>
#include <csignal>
#include <sys/stat.h>

#include <gtest/gtest.h>

namespace {

// Three channels, of which the third completes the first; and what the command makes of them.

const char channels[] =
    "<CHANDESCRIPTIONS>\n"
    "<CHANNEL><DTYPE>9</DTYPE><PROP>A/B/C</PROP><NAME>CH.C</NAME><UNITS>V</UNITS></CHANNEL>\n"
    "<CHANNEL><EVTYPE>1</EVTYPE><DTYPE>41</DTYPE><PROP>A/B/D</PROP><NAME>CH.D</NAME>"
    "<BIT>3<BIT_NAME>on</BIT_NAME><BIT_DESCR>switched on</BIT_DESCR></BIT></CHANNEL>\n"
    "<CHANNEL><STREAM>7</STREAM><EVTYPE>4</EVTYPE><PROP>A/B/C</PROP><NAME>CH.C</NAME></CHANNEL>\n"
    "</CHANDESCRIPTIONS>\n";

const char table_plain[] = "7\t4\tCH.C\tA/B/C\t0\t\"\"\t\"V\"\t1\t0\t0\n"
                           "0\t1\tCH.D\tA/B/D\t0\t\"\"\t\"\"\t1\t1\t0\n"
                           "3\ton\t\"switched on\"\n";
const char table_shifted[] = "7\t16\tCH.C\tA/B/C\t0\t\"\"\t\"V\"\t1\t0\t0\n"
                             "0\t2\tCH.D\tA/B/D\t0\t\"\"\t\"\"\t1\t1\t0\n"
                             "3\ton\t\"switched on\"\n";
const char table_unmerged[] = "0\t0\tCH.C\tA/B/C\t0\t\"\"\t\"V\"\t1\t0\t0\n"
                              "0\t1\tCH.D\tA/B/D\t0\t\"\"\t\"\"\t1\t1\t0\n"
                              "3\ton\t\"switched on\"\n";
const char summary_shifted[] = "                                              CH.C\t1\tBLOCK_SINGLE\n"
                               "                                              CH.D\t1\tBLOCK_SINGLE\n";
const char xml_chandescriptions[] =
    "<?xml version=\"1.0\" encoding=\"ISO-8859-1\" ?>\n<CHANDESCRIPTIONS>\n"
    "<CHANNEL>\n<STREAM>7</STREAM>\n<EVTYPE>4</EVTYPE>\n<DTYPE>9</DTYPE>\n<DB_KEY>-1</DB_KEY>\n<COUNT>0</"
    "COUNT>\n"
    "<SB_NAME></SB_NAME>\n<PROP>A/B/C</PROP>\n<NAME>CH.C</NAME>\n<SETPOINT>0</SETPOINT>\n<SUBSYSTEM></"
    "SUBSYSTEM>\n"
    "<UNITS>V</UNITS>\n<DESC></DESC>\n<SIZE>1</SIZE>\n</CHANNEL>\n"
    "<CHANNEL>\n<STREAM>0</STREAM>\n<EVTYPE>1</EVTYPE>\n<DTYPE>41</DTYPE>\n<DB_KEY>-1</DB_KEY>\n<COUNT>0</"
    "COUNT>\n"
    "<SB_NAME></SB_NAME>\n<PROP>A/B/D</PROP>\n<NAME>CH.D</NAME>\n<SETPOINT>0</SETPOINT>\n<SUBSYSTEM></"
    "SUBSYSTEM>\n"
    "<UNITS></UNITS>\n<DESC></DESC>\n<SIZE>1</SIZE>\n"
    "<BIT>3\n<BIT_NAME>on</BIT_NAME>\n<BIT_DESCR>switched on</BIT_DESCR>\n</BIT>\n</CHANNEL>\n"
    "</CHANDESCRIPTIONS>\n\n";
const char xml_daqvariables[] =
    "<?xml version=\"1.0\" encoding=\"ISO-8859-1\" ?>\n<DAQvariables>\n"
    "<DaqFloat>\n<evType>4</evType>\n<orvin>A/B/C</orvin>\n<daqName>CH.C</daqName>\n<DBKey>-1</DBKey>\n"
    "<setPoint>0</setPoint>\n<sbName></sbName>\n<subSystem></subSystem>\n<description></description>\n"
    "<units>V</units>\n<freq>1</freq>\n</DaqFloat>\n"
    "<DaqBits>\n<evType>1</evType>\n<orvin>A/B/D</orvin>\n<daqName>CH.D</daqName>\n<DBKey>-1</DBKey>\n"
    "<setPoint>0</setPoint>\n<sbName></sbName>\n<subSystem></subSystem>\n<description></description>\n"
    "<units></units>\n<bitTitle bit=\"3\">switched on</bitTitle>\n<freq>1</freq>\n</DaqBits>\n"
    "</DAQvariables>\n\n";

const char broken[] = "<CHANDESCRIPTIONS>\n<CHANNEL><PROP>A/B/C</PROP></CHANEL>\n</CHANDESCRIPTIONS>\n";

const char listed_record[] =
    "========================\n"
    "ZEB5 XML Channel Description (XCD)\n"
    "--------------[0]-----------------\n"
    " stream   : 0 \n ev type  : 0x0 \n data type: 0x0 \n"
    "\tcount  :0\n\tdb_key :-1\n\tprop   :A/B/C\n\tname   :\n\tset_pnt:no\n\tdesc   :\n"
    "\tsb_name:\n\tsubsys :\n\tunit   :\n\tmax_sz :1\n";
const char one_channel[] = "<CHANDESCRIPTIONS><CHANNEL><PROP>A/B/C</PROP></CHANNEL></CHANDESCRIPTIONS>";

/// The two bytes and the NULs of UTF-16 for an ASCII text.
std::string utf_16(const std::string &text) {
    std::string wide = "\xff\xfe";
    for (char c : text)
        wide += std::string{c, '\0'};
    return wide;
}

class Command : public testing::Test {
protected:
    Command() {
        folder.write("channels.xml", channels);
        folder.write("one.xml", one_channel);
        folder.write("broken.xml", broken);
        folder.write("other.xml", "<OTHER><A/></OTHER>");
    }
    command_result run(const std::vector<std::string> &arguments, const std::string &input = "") const {
        return folder.run(arguments, input);
    }
    std::string parser_report(const std::string &name) const {
        return "Fatal Error at (file " + name + ", line 2, char 30): expected end of tag 'CHANNEL'\n";
    }

    command_folder folder;
};

// The command line

TEST_F(Command, TellsItsVersion) {
    EXPECT_EQ(run({"--version"}), (command_result{0, "zeb5xml " ZEB5XML_VERSION "\n", ""}));
}

TEST_F(Command, RefusesAWrongCommandLineWithStatus2) {
    struct wrong_line {
        std::vector<std::string> arguments;
        std::string message;
        const char *help; // that the user is pointed to
    };
    const wrong_line lines[] = {
        {{}, "A subcommand is required", "--help"},
        {{"shwo", "one.xml"}, "unknown subcommand: shwo; did you mean 'show'?", "--help"},
        {{"frobnicate"}, "unknown subcommand: frobnicate", "--help"},
        {{"show"}, "FILE is required", "show --help"},
        {{"show", "--tabs", "one.xml"}, "unknown option: --tabs", "show --help"},
        {{"select", "channels.xml", "--slwo"},
         "unknown option: --slwo; did you mean '--slow'?",
         "select --help"},
        {{"convert", "channels.xml"}, "--to is required", "convert --help"},
        {{"convert", "channels.xml", "--to", "tabel"},
         "--to: 'tabel' is none of chandescriptions, daqvariables, table, summary, envindexdict; did you "
         "mean "
         "'table'?",
         "convert --help"},
        {{"select", "channels.xml", "--event", "NONE"}, "--event: no event type: NONE", "select --help"},
        {{"select", "channels.xml", "--event", "32"},
         "--event: no event type: 32; types go from 0 to 31",
         "select --help"},
        {{"select", "channels.xml", "--block", "63"},
         "--block: no block type: 63; types go from 0 to 30 and from 32 to 62",
         "select --help"},
        {{"select", "channels.xml", "--block", "31"},
         "--block: no block type: 31; types go from 0 to 30 and from 32 to 62",
         "select --help"},
    };
    for (const wrong_line &line : lines)
        EXPECT_EQ(run(line.arguments),
                  (command_result{2, "", "zeb5xml: " + line.message + "\nTry: zeb5xml " + line.help + "\n"}));
}

// Reading

TEST_F(Command, ShowsTheListingOfAFile) {
    EXPECT_EQ(run({"show", "one.xml"}), (command_result{0, listed_record, ""}));
}

TEST_F(Command, ShowsStandardInputGivenAsADash) {
    EXPECT_EQ(run({"show", "-"}, one_channel), (command_result{0, listed_record, ""}));
}

TEST_F(Command, ShowsSeveralFilesUnderHeadings) {
    EXPECT_EQ(
        run({"show", "one.xml", "-"}, one_channel),
        (command_result{
            0, "==> one.xml <==\n" + std::string(listed_record) + "==> standard input <==\n" + listed_record,
            ""}));
}

TEST_F(Command, ShowsWhatWasReadBeforeAnError) {
    EXPECT_EQ(run({"show", "broken.xml"}),
              (command_result{1, listed_record,
                              parser_report("broken.xml") +
                                  "zeb5xml: broken.xml: not read without errors: only 1 channel listed\n"}));
}

TEST_F(Command, NamesStandardInputInTheReportsOfTheParser) {
    EXPECT_EQ(
        run({"show", "-"}, broken),
        (command_result{1, listed_record,
                        parser_report("standard input") +
                            "zeb5xml: standard input: not read without errors: only 1 channel listed\n"}));
}

TEST_F(Command, SaysWhyADocumentCannotBeReadAndGoesOnWithTheNext) {
    mkdir(folder.path("folder").c_str(), 0700);
    folder.write("empty.xml", "");
    EXPECT_EQ(
        run({"show", "missing.xml", "folder", "empty.xml", "other.xml", "one.xml"}),
        (command_result{
            1, "==> one.xml <==\n" + std::string(listed_record),
            "zeb5xml: missing.xml: No such file or directory\n"
            "zeb5xml: folder: Is a directory\n"
            "zeb5xml: empty.xml: the document is empty\n"
            "zeb5xml: other.xml: root element 'OTHER' is none of CHANDESCRIPTIONS, DAQvariables, BMR and "
            "ENVINDEXDICT, and no camera feature could be read\n"}));
}

TEST_F(Command, SaysOfAnEmptyDocumentOnlyThatItIsEmpty) {
    folder.write("blank.xml", " \n");
    for (const std::vector<std::string> &start : {std::vector<std::string>{"show"},
                                                  {"export"},
                                                  {"canonical"},
                                                  {"convert", "--to", "table"},
                                                  {"merge"},
                                                  {"select"},
                                                  {"catalogue"}})
        for (const char *file : {"blank.xml", "-"}) {
            std::vector<std::string> arguments = start;
            arguments.push_back(file);
            const std::string name = *file == '-' ? "standard input" : file;
            const std::string heading =
                start[0] == "select" ? "CHANNEL  PROPERTY  EVENTS  DATA  SLOW  ML  SUB\n" : "";
            EXPECT_EQ(run(arguments),
                      (command_result{1, heading, "zeb5xml: " + name + ": the document is empty\n"}))
                << start[0];
        }
}

// White space was once looked for in the first 65,536 bytes only
TEST_F(Command, TakesADocumentForEmptyWhateverTheLengthOfItsWhiteSpace) {
    const std::string blanks(70'000, ' ');
    folder.write("blank.xml", blanks);
    EXPECT_EQ(run({"show", "blank.xml"}),
              (command_result{1, "", "zeb5xml: blank.xml: the document is empty\n"}));
    folder.write("begun.xml", blanks + "<BMR");
    EXPECT_EQ(run({"show", "begun.xml"}),
              (command_result{1, "",
                              "Fatal Error at (file begun.xml, line 1, char 70005): unexpected end of input\n"
                              "zeb5xml: begun.xml: no root element could be read\n"}));
}

TEST_F(Command, ReadsUtf16) {
    const std::string wide = utf_16(one_channel);
    folder.write("wide.xml", wide);
    EXPECT_EQ(run({"show", "wide.xml"}), (command_result{0, listed_record, ""}));
    EXPECT_EQ(
        run({"convert", "wide.xml", "--to", "table"}),
        (command_result{0, "0\t0\t!!!UNDEFINED!!!\tA/B/C\t0\t\"\"\t\"\"\t1\t0\t0\n",
                        "zeb5xml: wide.xml: holds NUL bytes, as UTF-16 does: read with the file reader\n"}));
    EXPECT_EQ(run({"show", "-"}, wide), (command_result{0, listed_record, ""}));
}

// Conversion

TEST_F(Command, ConvertsChannelDescriptions) {
    struct conversion {
        std::vector<std::string> options;
        const char *text;
        std::vector<std::string> losses = {};
    };
    const conversion conversions[] = {
        {{"--to", "chandescriptions"}, xml_chandescriptions},
        {{"--to", "daqvariables", "--force"},
         xml_daqvariables,
         {"no reader takes stream from daqvariables: it changes in 1 channel, such as A/B/C: stream: 7 "
          "becomes 0",
          "no reader takes dtype from daqvariables: it changes in 2 channels, such as A/B/C: dtype: 0x9 "
          "(0:ENV_BLOCK) becomes 0x0",
          "daqvariables changes bits in 1 channel, such as A/B/D: bits[3].bit_name: \"on\" becomes \"\""}},
        {{"--to", "table"}, table_plain},
        {{"--to", "table", "--shift"}, table_shifted},
        {{"--to", "table", "--keep-duplicates", "--force"},
         table_unmerged,
         {"A/B/C (2): the record is left out"}},
        {{"--to", "summary", "--shift"}, summary_shifted},
    };
    for (const conversion &row : conversions) {
        std::vector<std::string> arguments = {"convert", "channels.xml"};
        arguments.insert(arguments.end(), row.options.begin(), row.options.end());
        std::string of_file, of_input;
        for (const std::string &loss : row.losses) {
            of_file += "zeb5xml: channels.xml: " + loss + "\n";
            of_input += "zeb5xml: standard input: " + loss + "\n";
        }
        EXPECT_EQ(run(arguments), (command_result{0, row.text, of_file}));
        arguments[1] = "-";
        EXPECT_EQ(run(arguments, channels), (command_result{0, row.text, of_input}));
    }
}

TEST_F(Command, ConvertsTheOtherDialectOfChannelDescriptions) {
    const char document[] =
        "<DAQvariables><DaqFloat><evType>4</evType><orvin>A/B/C</orvin><daqName>CH.C</daqName>"
        "<units>V</units></DaqFloat></DAQvariables>";
    EXPECT_EQ(run({"convert", "-", "--to", "table", "--shift"}, document),
              (command_result{0, "0\t16\tCH.C\tA/B/C\t0\t\"\"\t\"V\"\t1\t0\t0\n", ""}));
}

TEST_F(Command, WritesNothingWhenTheDocumentHasErrors) {
    EXPECT_EQ(run({"convert", "broken.xml", "--to", "table", "-o", "out.txt"}),
              (command_result{1, "",
                              parser_report("broken.xml") +
                                  "zeb5xml: broken.xml: not read without errors: nothing written\n"}));
    EXPECT_FALSE(std::filesystem::exists(folder.path("out.txt")));
}

TEST_F(Command, RefusesFormsAndOptionsOfOtherKinds) {
    EXPECT_EQ(run({"convert", "channels.xml", "--to", "envindexdict"}),
              (command_result{1, "",
                              "zeb5xml: channels.xml: --to envindexdict is not for channel descriptions\n"}));
    EXPECT_EQ(run({"convert", "channels.xml", "--to", "table", "--layout", "2010"}),
              (command_result{1, "", "zeb5xml: channels.xml: --layout is not for channel descriptions\n"}));
}

TEST_F(Command, SaysHowToReadJson) {
    for (const char *json : {"{}", " \n[\n]"})
        EXPECT_EQ(run({"convert", "-", "--to", "table"}, json),
                  (command_result{1, "", "zeb5xml: standard input: is no XML; --from json reads JSON\n"}));
}

// Where output goes

TEST_F(Command, ReplacesAFileAndLeavesNothingBesideIt) {
    folder.write("out.txt", "older text");
    chmod(folder.path("out.txt").c_str(), 04640); // set-user-ID is not taken over
    EXPECT_EQ(run({"convert", "channels.xml", "--to", "table", "-o", "out.txt"}),
              (command_result{0, "", ""}));
    EXPECT_EQ(folder.text("out.txt"), table_plain);
    struct stat status;
    ASSERT_EQ(stat(folder.path("out.txt").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640u);
    std::filesystem::directory_iterator entries(folder.path("."));
    EXPECT_EQ(std::distance(begin(entries), end(entries)), 5); // the four documents and out.txt
}

TEST_F(Command, ConvertsAFileIntoItself) {
    EXPECT_EQ(run({"convert", "channels.xml", "--to", "table", "-o", "channels.xml"}),
              (command_result{0, "", ""}));
    EXPECT_EQ(folder.text("channels.xml"), table_plain);
}

TEST_F(Command, WritesThroughASymbolicLink) {
    std::filesystem::create_symlink("target.txt", folder.path("link.txt"));
    EXPECT_EQ(run({"convert", "channels.xml", "--to", "table", "-o", "link.txt"}),
              (command_result{0, "", ""}));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path("link.txt")));
    EXPECT_EQ(folder.text("target.txt"), table_plain);
}

TEST_F(Command, LeavesLinksInACircleAlone) {
    std::filesystem::create_symlink("b.txt", folder.path("a.txt"));
    std::filesystem::create_symlink("a.txt", folder.path("b.txt"));
    EXPECT_EQ(run({"convert", "channels.xml", "--to", "table", "-o", "a.txt"}),
              (command_result{3, "", "zeb5xml: a.txt: Too many levels of symbolic links\n"}));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path("a.txt")));
}

TEST_F(Command, WritesStraightToADevice) {
    struct stat before, after;
    ASSERT_EQ(stat("/dev/full", &before), 0);
    EXPECT_EQ(run({"convert", "channels.xml", "--to", "table", "-o", "/dev/full"}),
              (command_result{3, "", "zeb5xml: /dev/full: No space left on device\n"}));
    EXPECT_EQ(run({"convert", "channels.xml", "--to", "table", "-o", "/dev/null"}),
              (command_result{0, "", ""}));
    ASSERT_EQ(stat("/dev/full", &after), 0);
    EXPECT_TRUE(S_ISCHR(after.st_mode));
    EXPECT_EQ(before.st_ino, after.st_ino);
}

TEST_F(Command, WritesStraightToAFifo) {
    ASSERT_EQ(mkfifo(folder.path("fifo").c_str(), 0600), 0);
    int reader = open(folder.path("fifo").c_str(), O_RDONLY | O_NONBLOCK);
    ASSERT_GE(reader, 0);
    EXPECT_EQ(run({"convert", "channels.xml", "--to", "table", "-o", "fifo"}), (command_result{0, "", ""}));
    char text[1000];
    ssize_t count = read(reader, text, sizeof text);
    close(reader);
    ASSERT_GE(count, 0);
    EXPECT_EQ(std::string(text, static_cast<size_t>(count)), table_plain);
    EXPECT_TRUE(std::filesystem::is_fifo(folder.path("fifo")));
}

TEST_F(Command, SaysWhyOutputCouldNotBeWritten) {
    EXPECT_EQ(run({"convert", "channels.xml", "--to", "table", "-o", "nowhere/out.txt"}),
              (command_result{3, "", "zeb5xml: nowhere/out.txt: No such file or directory\n"}));
    const std::vector<std::string> arguments = {"show", "one.xml"};
    EXPECT_EQ(folder.run(arguments, "", [] { dup2(open("/dev/full", O_WRONLY), STDOUT_FILENO); }),
              (command_result{3, "", "zeb5xml: standard output: No space left on device\n"}));
    EXPECT_EQ(folder.run(arguments, "", [] { close(STDOUT_FILENO); }),
              (command_result{3, "", "zeb5xml: standard output: Bad file descriptor\n"}));
}

/// Turns standard output to a pipe that nobody reads.
void break_output() {
    int ends[2];
    if (pipe(ends) != 0)
        _exit(126);
    dup2(ends[1], STDOUT_FILENO);
    close(ends[0]);
    close(ends[1]);
}

TEST_F(Command, EndsSilentlyWhenNobodyReadsItsOutput) {
    EXPECT_EQ(folder.run({"show", "one.xml"}, "", break_output), (command_result{-SIGPIPE, "", ""}));
    EXPECT_EQ(folder.run({"show", "one.xml"}, "",
                         [] {
                             signal(SIGPIPE, SIG_IGN);
                             break_output();
                         }),
              (command_result{3, "", ""}));
}

} // namespace
