/// `zeb5xml merge`: documents are completed, and every disagreement is told.

#include <gtest/gtest.h>

#include "support/command_runner.h"

namespace {

std::string document(const std::string &channels) {
    return "<CHANDESCRIPTIONS>" + channels + "</CHANDESCRIPTIONS>";
}

const std::string first = document("<CHANNEL><STREAM>1</STREAM><PROP>A</PROP><NAME>N</NAME><UNITS>V</UNITS>"
                                   "<BIT>1<BIT_NAME>on</BIT_NAME></BIT><BIT>2</BIT></CHANNEL>");
const std::string second =
    document("<CHANNEL><EVTYPE>4</EVTYPE><PROP>A</PROP><NAME>M</NAME><UNITS>V</UNITS><DESC>text</DESC>"
             "<SIZE>8</SIZE><BIT>1<BIT_NAME>ON</BIT_NAME></BIT><BIT>3</BIT></CHANNEL>"
             "<CHANNEL><PROP>B</PROP><NAME>B</NAME></CHANNEL>");

/// Table of the channels in out.xml.
class Merge : public testing::Test {
protected:
    Merge() {
        folder.write("a.xml", first);
        folder.write("b.xml", second);
    }
    std::string table() const { return folder.run({"convert", "out.xml", "--to", "table"}).out; }

    command_folder folder;
};

TEST_F(Merge, FillsWhatIsEmptyAndTellsWhatDisagrees) {
    EXPECT_EQ(folder.run({"merge", "a.xml", "b.xml", "-o", "out.xml"}),
              (command_result{0, "",
                              "zeb5xml: A: daq_name: \"M\" of b.xml gives way to \"N\"\n"
                              "zeb5xml: A: max_size: 8 of b.xml gives way to 1\n"
                              "zeb5xml: A: bits[1].bit_name: \"ON\" of b.xml gives way to \"on\"\n"}));
    EXPECT_EQ(table(), "1\t4\tN\tA\t0\t\"text\"\t\"V\"\t1\t3\t0\n1\ton\t\"\"\n2\t\t\"\"\n3\t\t\"\"\n"
                       "0\t0\tB\tB\t0\t\"\"\t\"\"\t1\t0\t0\n");
}

TEST_F(Merge, LetsTheLaterDocumentWinWhenForced) {
    EXPECT_EQ(
        folder.run({"merge", "a.xml", "-", "-o", "out.xml", "--force"}, second),
        (command_result{0, "",
                        "zeb5xml: A: daq_name: \"N\" gives way to \"M\" of standard input\n"
                        "zeb5xml: A: bits[1].bit_name: \"on\" gives way to \"ON\" of standard input\n"
                        "zeb5xml: A: bits[2]: {\"bit\":2,\"bit_name\":\"\",\"bit_desc\":\"\"} gives way to "
                        "nothing of standard input\n"}));
    EXPECT_EQ(table(), "1\t4\tM\tA\t0\t\"text\"\t\"V\"\t8\t2\t0\n1\tON\t\"\"\n3\t\t\"\"\n"
                       "0\t0\tB\tB\t0\t\"\"\t\"\"\t1\t0\t0\n");
}

TEST_F(Merge, WritesNothingWhenADocumentIsFaultyOrOfAnotherKind) {
    folder.write("out.xml", "old");
    EXPECT_EQ(
        folder.run({"merge", "a.xml", "-", "-o", "out.xml"}, "<BMR/>"),
        (command_result{
            1, "", "zeb5xml: standard input: is an event list: only channel descriptions can be merged\n"}));
    EXPECT_EQ(
        folder.run({"merge", "a.xml", "-", "-o", "out.xml"}, "<CHANDESCRIPTIONS><x></CHANDESCRIPTIONS>"),
        (command_result{1, "",
                        "Fatal Error at (file standard input, line 1, char 24): expected end of tag 'x'\n"
                        "zeb5xml: standard input: not read without errors: nothing written\n"}));
    EXPECT_EQ(folder.run({"merge", "a.xml", "-", "-o", "out.xml"},
                         document("<CHANNEL><PROP>&amp;</PROP></CHANNEL>")),
              (command_result{
                  1, "",
                  "zeb5xml: merged channels: &: prop_name: \"&\" makes the document ill-formed, as it is "
                  "written without escaping\n"
                  "zeb5xml: merged channels: nothing written, as values would be lost\n"}));
    EXPECT_EQ(
        folder.run({"merge", "a.xml", "-", "-o", "out.xml"},
                   document("<CHANNEL><PROP>C</PROP><UNIT>V</UNIT><NAME>N</NAME></CHANNEL>")),
        (command_result{1, "",
                        "zeb5xml: standard input:1:42: channel 'C': no reader knows <UNIT>; did you mean "
                        "<UNITS>? [unknown-element]\n"
                        "zeb5xml: merged channels: nothing written, as values would be lost; `zeb5xml "
                        "convert --force` writes a document without what is dropped\n"}));
    EXPECT_EQ(folder.text("out.xml"), "old");
}

// Its reader merges channels of one property by itself
TEST_F(Merge, WritesNothingWhenAReaderDropsAChannel) {
    EXPECT_EQ(
        folder.run({"merge", "-"}, "<DAQvariables><DaqFloat><orvin>A</orvin><daqName>N</daqName></DaqFloat>"
                                   "<DaqFloat><orvin>A</orvin><units>V</units></DaqFloat></DAQvariables>"),
        (command_result{
            1, "",
            "zeb5xml: standard input:1:82: another channel has the same <orvin> 'A': only event types are "
            "merged into it, and the rest of this one is ignored; the first is at 1:25 "
            "[duplicate-identity]\n"
            "zeb5xml: merged channels: nothing written, as values would be lost; `zeb5xml convert --force` "
            "writes a document without what is dropped\n"}));
}

// Equal texts are equal whatever the encoding and the dialect of their document
TEST_F(Merge, FindsNoDisagreementBetweenEncodings) {
    const std::string latin_1 = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>";
    folder.write("utf8.xml", document("<CHANNEL><PROP>\xc2\xb5</PROP><NAME>N\xc3\xa4</NAME>"
                                      "<UNITS>\xc2\xb5V</UNITS></CHANNEL>"));
    folder.write("latin1.xml", latin_1 + document("<CHANNEL><PROP>\xb5</PROP><NAME>N\xe4</NAME>"
                                                  "<UNITS>\xb5V</UNITS></CHANNEL>"));
    folder.write("variables.xml", latin_1 +
                                      "<DAQvariables><DaqFloat><orvin>\xb5</orvin><daqName>N\xe4</daqName>"
                                      "<units>\xb5V</units></DaqFloat></DAQvariables>");
    const command_result once = folder.run({"convert", "latin1.xml", "--to", "chandescriptions"});
    EXPECT_EQ(folder.run({"merge", "utf8.xml", "latin1.xml", "variables.xml"}), once);
    EXPECT_EQ(once.err, "");
    EXPECT_EQ(folder.run({"diff", "utf8.xml", "latin1.xml"}), (command_result{0, "", ""}));
    EXPECT_EQ(folder.run({"diff", "utf8.xml", "variables.xml"}),
              (command_result{0, "",
                              "zeb5xml: not compared, as readers do not get them from daqvariables as they "
                              "are: stream, dtype, count, "
                              "db_key, sb_name, bits, dims.stats\n"}));
}

} // namespace
