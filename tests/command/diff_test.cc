/// `zeb5xml canonical` and `zeb5xml diff`: records are compared by identity.

#include <gtest/gtest.h>

#include "support/command_runner.h"

namespace {

const std::string a_channel = "<CHANNEL><EVTYPE>4</EVTYPE><PROP>A</PROP><NAME>N.A</NAME><UNITS>V</"
                              "UNITS><BIT>3<BIT_NAME>on</BIT_NAME></BIT>"
                              "<BIT>1<BIT_NAME>off</BIT_NAME></BIT></CHANNEL>";
const std::string b_channel = "<CHANNEL><PROP>B</PROP><NAME>N.B</NAME></CHANNEL>";

std::string document(const std::string &channels) {
    return "<CHANDESCRIPTIONS>" + channels + "</CHANDESCRIPTIONS>";
}
std::string dictionary(const std::string &entries) { return "<ENVINDEXDICT>" + entries + "</ENVINDEXDICT>"; }
std::string entry(const std::string &index, const std::string &prop) {
    return "<CHANNEL><INDEX>" + index + "</INDEX><PROP>" + prop + "</PROP></CHANNEL>";
}
const char variables[] = "<DAQvariables><isodate>2020-01-01T00:00:00</isodate><DaqFloat><orvin>B</"
                         "orvin><daqName>N.B</daqName></DaqFloat>"
                         "<DaqFloat><evType>4</evType><orvin>A</orvin><daqName>N.A</daqName><units>V</"
                         "units></DaqFloat></DAQvariables>";

std::string json_of(const std::string &name, const std::string &fields, const std::string &bits) {
    return R"({"kind":"channel","prop_name":")" + name + R"(","daq_name":"N.)" + name + R"(","stream":0,)" +
           fields + R"("dtype":0,"dtype_names":[],"count":0,"db_key":-1,"prop_desc":"","units":")" +
           (name == "A" ? "V" : "") + R"(","max_size":1,"sb_name":"","set_point":0,"subsystem":"","bits":[)" +
           bits + R"(],"dims":[]})";
}
const std::string no_event = R"("ev_type":0,"ev_type_names":[],)";
const std::string bor = R"("ev_type":4,"ev_type_names":["BOR"],)";

class Diff : public testing::Test {
protected:
    command_result diff(const std::string &before, const std::string &after,
                        const std::vector<std::string> &options = {}) const {
        folder.write("a.xml", before);
        folder.write("b.xml", after);
        std::vector<std::string> arguments = {"diff", "a.xml", "b.xml"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return folder.run(arguments);
    }

    command_folder folder;
};

// canonical

TEST_F(Diff, CanonicalSortsRecordsAndTheirPartsByIdentity) {
    EXPECT_EQ(folder.run({"canonical", "-"}, document(b_channel + a_channel)),
              (command_result{0,
                              json_of("A", bor,
                                      R"({"bit":1,"bit_name":"off","bit_desc":""},)"
                                      R"({"bit":3,"bit_name":"on","bit_desc":""})") +
                                  "\n" + json_of("B", no_event, "") + "\n",
                              ""}));
    EXPECT_EQ(folder.run({"canonical", "-"}, variables),
              (command_result{0, json_of("A", bor, "") + "\n" + json_of("B", no_event, "") + "\n", ""}));
}

TEST_F(Diff, CanonicalSortsNumbersByTheirValue) {
    EXPECT_EQ(
        folder.run({"canonical", "-"}, dictionary(entry("10", "X") + entry("9", "Y"))).out,
        R"({"kind":"dictionary entry","index":9,"env_prop":"Y","env_ch_abs_delta":0,"env_ch_rel_delta":0})"
        "\n"
        R"({"kind":"dictionary entry","index":10,"env_prop":"X","env_ch_abs_delta":0,"env_ch_rel_delta":0})"
        "\n");
}

// The order of records with one identity once showed
TEST_F(Diff, CanonicalSortsRecordsAndPartsOfOneIdentityByContent) {
    const std::string lines =
        R"({"kind":"dictionary entry","index":1,"env_prop":"P","env_ch_abs_delta":0,"env_ch_rel_delta":0})"
        "\n"
        R"({"kind":"dictionary entry","index":1,"env_prop":"Q","env_ch_abs_delta":0,"env_ch_rel_delta":0})"
        "\n";
    EXPECT_EQ(folder.run({"canonical", "-"}, dictionary(entry("1", "P") + entry("1", "Q"))),
              (command_result{0, lines, ""}));
    EXPECT_EQ(folder.run({"canonical", "-"}, dictionary(entry("1", "Q") + entry("1", "P"))),
              (command_result{0, lines, ""}));
    const std::string on = "<BIT>1<BIT_NAME>on</BIT_NAME></BIT>",
                      off = "<BIT>1<BIT_NAME>off</BIT_NAME></BIT>";
    const std::string before = "<CHANNEL><PROP>A</PROP><NAME>N.A</NAME><UNITS>V</UNITS>",
                      after = "</CHANNEL>";
    const std::string channel = json_of("A", no_event,
                                        R"({"bit":1,"bit_name":"off","bit_desc":""},)"
                                        R"({"bit":1,"bit_name":"on","bit_desc":""})") +
                                "\n";
    for (const std::string &bits : {on + off, off + on})
        EXPECT_EQ(folder.run({"canonical", "-"}, document(before + bits + after)),
                  (command_result{0, channel, ""}));
}

TEST_F(Diff, CanonicalWritesNothingOfAFaultyDocument) {
    EXPECT_EQ(
        folder.run({"canonical", "-"}, "<ENVINDEXDICT>" + entry("1", "P") + "<x></ENVINDEXDICT>"),
        (command_result{1, "",
                        "Fatal Error at (file standard input, line 1, char 69): expected end of tag 'x'\n"
                        "zeb5xml: standard input: not read without errors: nothing written\n"}));
}

// diff

TEST_F(Diff, RefusesStandardInputForBothDocuments) {
    EXPECT_EQ(folder.run({"diff", "-", "-"}),
              (command_result{
                  2, "", "zeb5xml: standard input cannot be both documents\nTry: zeb5xml diff --help\n"}));
}

TEST_F(Diff, IsSilentWhenOnlyTheOrderDiffers) {
    EXPECT_EQ(diff(document(a_channel + b_channel), document(b_channel + a_channel)),
              (command_result{0, "", ""}));
}

TEST_F(Diff, TellsFieldsAndPartsAndRecords) {
    const std::string changed = "<CHANNEL><EVTYPE>12</EVTYPE><PROP>A</PROP><NAME>N.A</NAME><UNITS>kV</UNITS>"
                                "<BIT>3<BIT_NAME>ON</BIT_NAME></BIT></CHANNEL>";
    const std::string c_channel = "<CHANNEL><PROP>C</PROP></CHANNEL>";
    EXPECT_EQ(diff(document(a_channel + b_channel), document(changed + c_channel)),
              (command_result{1,
                              "A: ev_type: 0x4 (BOR) -> 0xc (BOR:EOR)\n"
                              "A: units: \"V\" -> \"kV\"\n"
                              "A: bits[1]: {\"bit\":1,\"bit_name\":\"off\",\"bit_desc\":\"\"} -> nothing\n"
                              "A: bits[3].bit_name: \"on\" -> \"ON\"\n"
                              "B: removed\n"
                              "C: added\n",
                              ""}));
}

TEST_F(Diff, MatchesThoseRecordsOfOneIdentityThatAreMostAlike) {
    EXPECT_EQ(diff(dictionary(entry("1", "P") + entry("1", "Q")),
                   dictionary(entry("1", "P") + entry("1", "R") + entry("1", "S"))),
              (command_result{1, "index 1 (2): env_prop: \"Q\" -> \"R\"\nindex 1 (3): added\n", ""}));
    EXPECT_EQ(diff(dictionary(entry("1", "Q") + entry("1", "P")), dictionary(entry("1", "P"))),
              (command_result{1, "index 1 (2): removed\n", ""}));
    const std::string one = "<CHANNEL><PROP>A</PROP><NAME>M</NAME><UNITS>V</UNITS></CHANNEL>",
                      other = "<CHANNEL><PROP>A</PROP><NAME>N</NAME><DESC>D</DESC></CHANNEL>",
                      changed = "<CHANNEL><PROP>A</PROP><NAME>N</NAME><DESC>E</DESC></CHANNEL>";
    EXPECT_EQ(diff(document(one + other), document(changed)),
              (command_result{1, "A: removed\nA (2): prop_desc: \"D\" -> \"E\"\n", ""}));
    EXPECT_EQ(diff(document(changed), document(other + one)),
              (command_result{1, "A: prop_desc: \"E\" -> \"D\"\nA (2): added\n", ""}));
}

TEST_F(Diff, MatchesPartsOfOneIdentityWhateverTheirOrder) {
    const std::string on = "<BIT>1<BIT_NAME>on</BIT_NAME></BIT>",
                      off = "<BIT>1<BIT_NAME>off</BIT_NAME></BIT>",
                      open = "<BIT>1<BIT_NAME>open</BIT_NAME></BIT>";
    const auto channel = [](const std::string &bits) {
        return document("<CHANNEL><PROP>A</PROP>" + bits + "</CHANNEL>");
    };
    EXPECT_EQ(diff(channel(on + off), channel(off + on)), (command_result{0, "", ""}));
    EXPECT_EQ(diff(channel(on + off), channel(open + on)),
              (command_result{1, "A: bits[1].bit_name: \"off\" -> \"open\"\n", ""}));
}

// Many of one identity are not compared each with each
TEST_F(Diff, MatchesManyRecordsOfOneIdentity) {
    std::string before, after = entry("1", "new");
    for (int i = 10; i < 99; ++i) {
        before += entry("1", "old" + std::to_string(i));
        after += entry("1", (i < 50 ? "old" : "other") + std::to_string(i));
    }
    std::string changes = "index 1 (41): env_prop: \"old50\" -> \"new\"\n";
    for (int i = 51; i < 99; ++i)
        changes += "index 1 (" + std::to_string(i - 9) + "): env_prop: \"old" + std::to_string(i) +
                   "\" -> \"other" + std::to_string(i - 1) + "\"\n";
    EXPECT_EQ(diff(dictionary(before), dictionary(after)),
              (command_result{1, changes + "index 1 (90): added\n", ""}));
}

TEST_F(Diff, NamesEventTypes) {
    EXPECT_EQ(
        diff("<BMR><EVENT><TYPE>4</TYPE><SBLOCK>S</SBLOCK></EVENT></BMR>",
             "<BMR><EVENT><TYPE>4</TYPE><SBLOCK>S</SBLOCK><CHLIST><CHAN>C</CHAN></CHLIST></EVENT></BMR>"),
        (command_result{1, "ENV: sb_list[S].ch_list: [] -> [\"C\"]\n", ""}));
}

TEST_F(Diff, WritesJson) {
    EXPECT_EQ(diff(document(a_channel), document(a_channel), {"--format", "json"}),
              (command_result{0, "[\n]\n", ""}));
    const std::string changed = "<CHANNEL><EVTYPE>4</EVTYPE><PROP>A</PROP><NAME>N.A</NAME>"
                                "<UNITS>kV</UNITS><BIT>3<BIT_NAME>on</BIT_NAME></BIT></CHANNEL>";
    EXPECT_EQ(
        diff(document(a_channel + b_channel), document(changed), {"--format", "json"}), (command_result{1,
                                                                                                        R"([
{"record":"A","field":"units","was":"V","is":"kV"},
{"record":"A","field":"bits[1]","was":{"bit":1,"bit_name":"off","bit_desc":""},"is":null},
{"record":"B","removed":)" + json_of("B", no_event, "") + "}\n]\n",
                                                                                                        ""}));
}

TEST_F(Diff, LeavesOutWhatOneOfTheDialectsDoesNotHold) {
    const std::string note = "zeb5xml: not compared, as readers do not get them from daqvariables as they "
                             "are: stream, dtype, count, "
                             "db_key, sb_name, bits, dims.stats\n";
    EXPECT_EQ(diff(document(a_channel + b_channel), variables), (command_result{0, "", note}));
    const std::string nameless =
        "<CHANNEL><STREAM>4</STREAM><EVTYPE>4</EVTYPE><PROP>A</PROP><UNITS>kV</UNITS></CHANNEL>";
    EXPECT_EQ(diff(variables, document(nameless + b_channel)),
              (command_result{1, "A: daq_name: \"N.A\" -> \"\"\nA: units: \"V\" -> \"kV\"\n", note}));
}

TEST_F(Diff, GivesStatus2WhenDocumentsCannotBeCompared) {
    EXPECT_EQ(diff("<BMR/>", document(a_channel)),
              (command_result{2, "", "zeb5xml: a.xml is an event list, and b.xml channel descriptions\n"}));
    EXPECT_EQ(folder.run({"diff", "a.xml", "missing.xml"}),
              (command_result{2, "", "zeb5xml: missing.xml: No such file or directory\n"}));
    EXPECT_EQ(diff("<BMR/>", "<BMR><x></BMR>"),
              (command_result{2, "",
                              "Fatal Error at (file b.xml, line 1, char 11): expected end of tag 'x'\n"
                              "zeb5xml: b.xml: not read without errors: nothing compared\n"}));
}

} // namespace
