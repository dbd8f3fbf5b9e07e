/// The commands show, convert and select with every kind of document.

#include "support/command_runner.h"

#include <algorithm>
#include <regex>

#include <gtest/gtest.h>

namespace {

const char events[] = "<BMR><EVENT><TYPE>4</TYPE><TMASK>0x10</TMASK><SBLOCK>SRV</SBLOCK></EVENT></BMR>";
const char events_listed[] = "Entry[0]\nEVENT TYPE:\tENV\nTrigger mask:\t0x10 (16)\n"
                             "Min event time:\t0 sec 0 usec\nPriority:\t0x0 (0)\nServer Blocks: 1\n"
                             "Server block[0]: 'SRV'\nNo channel list -> ALL channels\n";

const char dictionary[] = "<ENVINDEXDICT><CHANNEL><INDEX>3</INDEX><PROP>A/B/C</PROP><DABS>0.5</DABS>"
                          "<DREL>0.01</DREL></CHANNEL></ENVINDEXDICT>";
const char dictionary_listed[] = "-------------- 1 -----------------\n Index : 3\n"
                                 " Channel: A/B/C DABS 0.5 DREL 0.01\n";
const char dictionary_table[] = "3\tA/B/C\t0.500000\t0.010000\n";
const char dictionary_xml[] = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\" ?>\n<ENVINDEXDICT>\n"
                              "\t<isodate>DATE</isodate>\n<CHANNEL>\n<INDEX>3</INDEX>\n<PROP>A/B/C</PROP>\n"
                              "<DABS>0.500000</DABS>\n<DREL>0.010000</DREL>\n</CHANNEL>\n</ENVINDEXDICT>\n\n";

const char camera[] = "<Camera><Group><Integer Name=\"Gain\"><ToolTip>T</ToolTip></Integer></Group></Camera>";
const char camera_listed[] = "[0] Name:'Gain' type:1 ToolTip:'T' Description:''\n";

/// Slow channel, fast channel with two dimensions, ML channel, channel without event type.
const char four_channels[] =
    "<CHANDESCRIPTIONS>\n"
    "<CHANNEL><EVTYPE>16</EVTYPE><DTYPE>512</DTYPE><PROP>SLOW/P</PROP><NAME>SLOW</NAME></CHANNEL>\n"
    "<CHANNEL><EVTYPE>66</EVTYPE><DTYPE>2147484160</DTYPE><PROP>FAST/P</PROP><NAME>FAST</NAME>"
    "<DIM>0</DIM><DIM>1</DIM></CHANNEL>\n"
    "<CHANNEL><EVTYPE>1048576</EVTYPE><PROP>ML/P</PROP><NAME>TOROID</NAME></CHANNEL>\n"
    "<CHANNEL><PROP>NONE/P</PROP><NAME>NONE</NAME></CHANNEL>\n"
    "</CHANDESCRIPTIONS>\n";
const std::string heading = "CHANNEL\tPROPERTY\tEVENTS\tDATA\tSLOW\tML\tSUB\n";
const std::string slow_row = "SLOW\tSLOW/P\tENV\tBLOCK_SINGLE\tyes\tno\t1\n";
const std::string fast_row = "FAST\tFAST/P\tNORMAL:IMAGE\tBLOCK_1CHAN_2010\tno\tno\t2\n";
const std::string ml_row = "TOROID\tML/P\tLLRF_ML\t\tno\tyes\t0\n";
const std::string none_row = "NONE\tNONE/P\t\t\t\t\t0\n";

class CommandKinds : public testing::Test {
protected:
    CommandKinds() {
        folder.write("events.xml", events);
        folder.write("dictionary.xml", dictionary);
        folder.write("camera.xml", camera);
        folder.write("channels.xml", four_channels);
    }
    command_result run(const std::vector<std::string> &arguments, const std::string &input = "") const {
        return folder.run(arguments, input);
    }

    command_folder folder;
};

// show and convert

TEST_F(CommandKinds, ShowKnowsEveryKindFromFileAndStandardInput) {
    struct kind {
        const char *file;
        const char *text;
        const char *listing;
    };
    const kind kinds[] = {{"events.xml", events, events_listed},
                          {"dictionary.xml", dictionary, dictionary_listed},
                          {"camera.xml", camera, camera_listed}};
    for (const kind &row : kinds) {
        EXPECT_EQ(run({"show", row.file}), (command_result{0, row.listing, ""}));
        EXPECT_EQ(run({"show", "-"}, row.text), (command_result{0, row.listing, ""}));
    }
}

TEST_F(CommandKinds, ConvertsADictionary) {
    for (const char *layout : {"classic", "2010"}) {
        EXPECT_EQ(run({"convert", "dictionary.xml", "--to", "table", "--layout", layout}),
                  (command_result{0, dictionary_table, ""}));
        command_result xml = run({"convert", "-", "--to", "envindexdict", "--layout", layout}, dictionary);
        xml.out =
            std::regex_replace(xml.out, std::regex("\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d"), "DATE");
        EXPECT_EQ(xml, (command_result{0, dictionary_xml, ""}));
    }
}

TEST_F(CommandKinds, LayoutOfADictionaryIs2010UnlessClassicIsAskedFor) {
    const std::string name(100, 'N');
    const std::string text =
        "<ENVINDEXDICT><CHANNEL><INDEX>1</INDEX><PROP>" + name + "</PROP></CHANNEL></ENVINDEXDICT>";
    EXPECT_EQ(run({"convert", "-", "--to", "table"}, text),
              (command_result{0, "1\t" + name + "\t0.000000\t0.000000\n", ""}));
    EXPECT_EQ(run({"convert", "-", "--to", "table", "--layout", "classic", "--force"}, text),
              (command_result{
                  0, "1\t" + name.substr(0, 79) + "\t0.000000\t0.000000\n",
                  "zeb5xml: standard input:1:40: entry 1: the text of <PROP> has 100 bytes, of which 79 are "
                  "kept in the classic layout: it ends with '" +
                      std::string(20, 'N') + "' [cut-field]\n"}));
}

TEST_F(CommandKinds, AnEntryThatADictionaryHoldsTwiceIsReleasedOnce) {
    EXPECT_EQ(
        run({"convert", "-", "--to", "table"},
            "<ENVINDEXDICT><CHANNEL><PROP>P</PROP><INDEX>1</INDEX><INDEX>2</INDEX></CHANNEL></ENVINDEXDICT>"),
        (command_result{0, "2\tP\t0.000000\t0.000000\n2\tP\t0.000000\t0.000000\n", ""}));
}

TEST_F(CommandKinds, ConvertRefusesWhatIsNotForTheKind) {
    struct refusal {
        std::vector<std::string> arguments;
        const char *message;
    };
    const refusal refusals[] = {
        {{"dictionary.xml", "--to", "summary"},
         "dictionary.xml: --to summary is not for an env index dictionary"},
        {{"dictionary.xml", "--to", "table", "--shift"},
         "dictionary.xml: --shift is not for an env index dictionary"},
        {{"events.xml", "--to", "table"}, "events.xml: is an event list, which has no other form"},
        {{"camera.xml", "--to", "table"}, "camera.xml: is a camera file, which has no other form"},
    };
    for (const refusal &row : refusals) {
        std::vector<std::string> arguments = {"convert"};
        arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
        EXPECT_EQ(run(arguments), (command_result{1, "", "zeb5xml: " + std::string(row.message) + "\n"}));
    }
}

// select

TEST_F(CommandKinds, SelectListsTheChannelsThatPassEveryTest) {
    struct selection {
        std::vector<std::string> options;
        std::string rows;
    };
    const selection selections[] = {
        {{}, slow_row + fast_row + ml_row + none_row},
        {{"--event", "IMAGE"}, fast_row},
        {{"--event", "zeb5_ev_image"}, fast_row},
        {{"--event", "6"}, fast_row},
        {{"--event", "HB"}, ""},
        {{"--block", "BLOCK_SINGLE"}, slow_row},
        {{"--block", "9"}, slow_row},
        {{"--block", "ZEB5_BLOCK_1CHAN_2010"}, fast_row},
        {{"--block", "41"}, fast_row},
        {{"--slow"}, slow_row},
        {{"--ml"}, ml_row},
        {{"--slow", "--ml"}, ""},
        {{"--channel", "FAST"}, fast_row},
        {{"--channel", "FAST/P"}, fast_row},
    };
    for (const selection &row : selections) {
        std::vector<std::string> arguments = {"select", "channels.xml", "--tabs"};
        arguments.insert(arguments.end(), row.options.begin(), row.options.end());
        EXPECT_EQ(run(arguments), (command_result{0, heading + row.rows, ""}));
        arguments[1] = "-";
        EXPECT_EQ(run(arguments, four_channels), (command_result{0, heading + row.rows, ""}));
    }
}

TEST_F(CommandKinds, SelectAlignsItsColumns) {
    EXPECT_EQ(run({"select", "channels.xml"}),
              (command_result{0,
                              "CHANNEL  PROPERTY  EVENTS        DATA              SLOW  ML   SUB\n"
                              "SLOW     SLOW/P    ENV           BLOCK_SINGLE      yes   no   1\n"
                              "FAST     FAST/P    NORMAL:IMAGE  BLOCK_1CHAN_2010  no    no   2\n"
                              "TOROID   ML/P      LLRF_ML       -                 no    yes  0\n"
                              "NONE     NONE/P    -             -                 -     -    0\n",
                              ""}));
}

// For people, a cell stays on its line; for programs, its text survives
TEST_F(CommandKinds, SelectKeepsCellsApart) {
    const char document[] = "<CHANDESCRIPTIONS><CHANNEL><PROP>a\tb\\</PROP><NAME>c\nd</NAME></CHANNEL>"
                            "</CHANDESCRIPTIONS>";
    EXPECT_EQ(run({"select", "-", "--tabs"}, document),
              (command_result{0, heading + "c\\nd\ta\\tb\\\\\t\t\t\t\t0\n", ""}));
    EXPECT_EQ(run({"select", "-"}, document),
              (command_result{0,
                              "CHANNEL  PROPERTY  EVENTS  DATA  SLOW  ML  SUB\n"
                              "c d      a b\\      -       -     -     -   0\n",
                              ""}));
}

TEST_F(CommandKinds, SelectSaysThatAChannelIsNotThere) {
    EXPECT_EQ(run({"select", "channels.xml", "--tabs", "--channel", "X"}),
              (command_result{1, heading, "zeb5xml: no such channel: X\n"}));
}

TEST_F(CommandKinds, SelectGoesOnAfterASourceThatFailed) {
    EXPECT_EQ(run({"select", "missing.xml", "events.xml", "channels.xml", "--tabs", "--slow"}),
              (command_result{1, heading + slow_row,
                              "zeb5xml: missing.xml: No such file or directory\n"
                              "WRONG root tag: 'BMR' must be 'CHANDESCRIPTIONS or DAQvariables'\n"
                              "zeb5xml: events.xml: channel descriptions not read without errors\n"}));
}

} // namespace
