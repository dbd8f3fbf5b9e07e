/// Options of show and export that select records.

#include <gtest/gtest.h>

#include "support/command_runner.h"

namespace {

const char channels[] =
    "<CHANDESCRIPTIONS>"
    "<CHANNEL><STREAM>1</STREAM><EVTYPE>12</EVTYPE><PROP>A/X</PROP><NAME>N.1</NAME><SUBSYSTEM>DIAG</"
    "SUBSYSTEM></CHANNEL>"
    "<CHANNEL><STREAM>2</STREAM><EVTYPE>8</EVTYPE><PROP>A/Y</PROP><NAME>N.2</NAME><SUBSYSTEM>RF</SUBSYSTEM></"
    "CHANNEL>"
    "<CHANNEL><STREAM>2</STREAM><PROP>B/X</PROP><NAME>M.3</NAME><SUBSYSTEM>RF</SUBSYSTEM></CHANNEL>"
    "</CHANDESCRIPTIONS>";

const char events[] = "<BMR><EVENT><TYPE>4</TYPE></EVENT><EVENT><TYPE>1</TYPE></EVENT></BMR>";

class Filters : public testing::Test {
protected:
    Filters() {
        folder.write("channels.xml", channels);
        folder.write("events.xml", events);
    }
    /// The first cells of the selected channels.
    std::string selected(const std::vector<std::string> &options) const {
        std::vector<std::string> arguments = {"export", "channels.xml", "--format", "tsv"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const command_result seen = folder.run(arguments);
        EXPECT_EQ(seen.status, 0);
        EXPECT_EQ(seen.err, "");
        std::string names;
        for (size_t at = seen.out.find('\n') + 1; at < seen.out.size(); at = seen.out.find('\n', at) + 1)
            names += seen.out.substr(at, seen.out.find('\t', at) - at) + " ";
        return names;
    }

    command_folder folder;
};

TEST_F(Filters, SelectChannels) {
    struct selection {
        std::vector<std::string> options;
        const char *names;
    };
    const selection selections[] = {
        {{}, "A/X A/Y B/X "},
        {{"--channel", "A/X"}, "A/X "},
        {{"--channel", "A*"}, "A/X A/Y "},
        {{"--channel", "*.[23]"}, "A/Y B/X "},
        {{"--channel", "a*"}, ""},
        {{"--event", "EOR"}, "A/X A/Y "},
        {{"--event", "2"}, "A/X "},
        {{"--stream", "2"}, "A/Y B/X "},
        {{"--subsystem", "R?"}, "A/Y B/X "},
        {{"--stream", "2", "--channel", "*X", "--subsystem", "*"}, "B/X "},
    };
    for (const selection &row : selections)
        EXPECT_EQ(selected(row.options), row.names);
}

TEST_F(Filters, ListOnlyWhatIsSelected) {
    EXPECT_EQ(folder.run({"show", "events.xml", "--event", "NORMAL"}),
              (command_result{
                  0,
                  "Entry[0]\nEVENT TYPE:\tNORMAL\nTrigger mask:\t0x0 (0)\nMin event time:\t0 sec 0 usec\n"
                  "Priority:\t0x0 (0)\nServer Blocks: 0\n",
                  ""}));
    EXPECT_EQ(folder.run({"show", "-", "--channel", "G*"},
                         "<C><Integer Name=\"Gain\"/><Float Name=\"Width\"/></C>"),
              (command_result{0, "[0] Name:'Gain' type:1 ToolTip:'' Description:''\n", ""}));
    EXPECT_EQ(folder.run({"show", "-", "--channel", "B"},
                         "<ENVINDEXDICT><CHANNEL><INDEX>1</INDEX><PROP>A</PROP></CHANNEL></ENVINDEXDICT>"),
              (command_result{0, "", ""}));
}

TEST_F(Filters, RefuseWhatIsNotForTheKind) {
    EXPECT_EQ(folder.run({"show", "events.xml", "--stream", "1"}),
              (command_result{1, "", "zeb5xml: events.xml: --stream is not for an event list\n"}));
    EXPECT_EQ(folder.run({"export", "events.xml", "--channel", "A"}),
              (command_result{1, "", "zeb5xml: events.xml: --channel is not for an event list\n"}));
    EXPECT_EQ(folder.run({"show", "events.xml", "--stream", "one"}).err.substr(0, 35),
              "zeb5xml: --stream: no number: one\nT");
    EXPECT_EQ(folder.run({"show", "events.xml", "--event", "NONE"}).status, 2);
}

} // namespace
