/// `zeb5xml convert` reads back what it wrote, names what was lost, and then leaves the old file as it was.

#include <csignal>
#include <filesystem>
#include <map>

#include <gtest/gtest.h>

#include "support/command_runner.h"
#include "support/dated_documents.h"

namespace {

std::string channel(const std::string &elements) {
    return "<CHANDESCRIPTIONS><CHANNEL>" + elements + "<NAME>N</NAME></CHANNEL></CHANDESCRIPTIONS>";
}

// What is written. Rows name the elements that are not as usual

using element_texts = std::map<std::string, std::string>;

std::string written_elements(const std::vector<std::pair<std::string, std::string>> &usual,
                             const element_texts &others) {
    std::string text;
    for (const auto &[name, content] : usual)
        text += "<" + name + ">" + (others.contains(name) ? others.at(name) : content) + "</" + name + ">\n";
    return text;
}

std::string written_channels(const std::string &channels) {
    return xml_declaration + "<CHANDESCRIPTIONS>\n" + channels + "</CHANDESCRIPTIONS>\n\n";
}
std::string written_channel(const element_texts &others, const std::string &parts = "") {
    return written_channels("<CHANNEL>\n" +
                            written_elements({{"STREAM", "0"},
                                              {"EVTYPE", "0"},
                                              {"DTYPE", "0"},
                                              {"DB_KEY", "-1"},
                                              {"COUNT", "0"},
                                              {"SB_NAME", ""},
                                              {"PROP", "A"},
                                              {"NAME", "N"},
                                              {"SETPOINT", "0"},
                                              {"SUBSYSTEM", ""},
                                              {"UNITS", ""},
                                              {"DESC", ""},
                                              {"SIZE", "1"}},
                                             others) +
                            parts + "</CHANNEL>\n");
}

std::string written_variable(const std::string &kind, const element_texts &others,
                             const std::string &parts = "") {
    return "<" + kind + ">\n" +
           written_elements({{"evType", "0"},
                             {"orvin", "A"},
                             {"daqName", "N"},
                             {"DBKey", "-1"},
                             {"setPoint", "0"},
                             {"sbName", ""},
                             {"subSystem", ""},
                             {"description", ""},
                             {"units", ""}},
                            others) +
           parts + "<freq>1</freq>\n</" + kind + ">\n";
}
std::string written_variables(const std::string &variables) {
    return xml_declaration + "<DAQvariables>\n" + variables + "</DAQvariables>\n\n";
}

const std::string written_entry =
    xml_declaration + "<ENVINDEXDICT>\n<CHANNEL>\n<INDEX>1</INDEX>\n<PROP>P</PROP>\n<DABS>0.000000</DABS>\n"
                      "<DREL>0.000000</DREL>\n</CHANNEL>\n</ENVINDEXDICT>\n\n";

const char refusal[] =
    "zeb5xml: in.xml: nothing written, as values would be lost; --force writes all the same\n";

class ConvertLosses : public testing::Test {
protected:
    ConvertLosses() { folder.write("out.xml", "old"); }
    command_result convert(const std::string &document, std::vector<std::string> options = {}) const {
        folder.write("in.xml", document);
        options.insert(options.begin(), {"convert", "in.xml", "-o", "out.xml"});
        return folder.run(options);
    }
    std::ptrdiff_t files() const {
        const std::filesystem::directory_iterator entries(folder.path("."));
        return std::distance(begin(entries), end(entries));
    }

    command_folder folder;
};

/// A document, its form, what is said before the refusal, and what is written when forced. A dictionary has a
/// date line, too.
struct loss_case {
    const char *form;
    std::string document;
    std::string losses;
    std::string text;
};
const loss_case loss_cases[] = {
    // The reader keeps the last piece
    {"chandescriptions", channel("<PROP>HALL&lt;2&gt;/CURRENT</PROP>"),
     "zeb5xml: in.xml:1:28: channel 'HALL<2>/CURRENT': the text of <PROP> comes in pieces (a reference): the "
     "reader keeps only '>/CURRENT' [lost-text]\n",
     written_channel({{"PROP", ">/CURRENT"}})},
    // ISO-8859-1 has no omega
    {"chandescriptions", channel("<PROP>A</PROP><UNITS>\xce\xa9</UNITS>"),
     "zeb5xml: in.xml: A: units: \"\xce\xa9\" becomes \"\xc3\x8e\xc2\xa9\"\n",
     written_channel({{"UNITS", "\xce\xa9"}})},
    {"daqvariables", channel("<PROP>\xce\xa9</PROP>"),
     "zeb5xml: in.xml: \xce\xa9: prop_name: \"\xce\xa9\" becomes \"\xc3\x8e\xc2\xa9\"\n",
     written_variables(written_variable("DaqFloat", {{"orvin", "\xce\xa9"}}))},
    {"chandescriptions", channel("<PROP>A</PROP><DESC>&amp;</DESC><BIT>1<BIT_NAME>&lt;</BIT_NAME></BIT>"),
     "zeb5xml: in.xml: A: prop_desc: \"&\" makes the document ill-formed, as it is written without escaping\n"
     "zeb5xml: in.xml: A: bits.bit_name: \"<\" makes the document ill-formed, as it is written without "
     "escaping\n",
     written_channel({{"DESC", "&"}}, "<BIT>1\n<BIT_NAME><</BIT_NAME>\n<BIT_DESCR></BIT_DESCR>\n</BIT>\n")},
    {"chandescriptions", channel("<PROP>A</PROP><UNITS>0123456789abcdef</UNITS>"),
     "zeb5xml: in.xml:1:42: channel 'A': the text of <UNITS> has 16 bytes, of which 15 are kept: it ends "
     "with "
     "'0123456789abcde' [cut-field]\n",
     written_channel({{"UNITS", "0123456789abcde"}})},
    {"daqvariables", channel("<PROP>A</PROP><BIT>1<BIT_NAME>on</BIT_NAME></BIT>"),
     "zeb5xml: in.xml: daqvariables changes bits in 1 channel, such as A: bits[1].bit_name: \"on\" becomes "
     "\"\"\n",
     written_variables(written_variable("DaqBits", {}, "<bitTitle bit=\"1\"></bitTitle>\n"))},
    {"envindexdict",
     "<ENVINDEXDICT><CHANNEL><INDEX>1</INDEX><PROP>P</PROP><DABS>1e-7</DABS></CHANNEL></ENVINDEXDICT>",
     "zeb5xml: in.xml: index 1: env_ch_abs_delta: 1e-07 becomes 0\n", written_entry},
    // Channels of one property: the reader takes from later ones what the first has not, of three fields
    {"chandescriptions",
     "<CHANDESCRIPTIONS><CHANNEL><STREAM>1</STREAM><PROP>A</PROP><NAME>N</NAME><UNITS>V</UNITS></CHANNEL>"
     "<CHANNEL><STREAM>2</STREAM><EVTYPE>4</EVTYPE><PROP>A</PROP><NAME>M</NAME><UNITS>V</UNITS>"
     "<DESC>text</DESC><BIT>3<BIT_NAME>on</BIT_NAME></BIT></CHANNEL></CHANDESCRIPTIONS>",
     "zeb5xml: in.xml: A: stream: 1 gives way to 3\n"
     "zeb5xml: in.xml: A (2), merged into the first: daq_name: \"M\" gives way to \"N\"\n"
     "zeb5xml: in.xml: A (2), merged into the first: stream: 2 gives way to 3\n"
     "zeb5xml: in.xml: A (2), merged into the first: prop_desc: \"text\" gives way to \"\"\n"
     "zeb5xml: in.xml: A (2), merged into the first: bits[3]: "
     "{\"bit\":3,\"bit_name\":\"on\",\"bit_desc\":\"\"} gives way to nothing\n",
     written_channel({{"STREAM", "3"}, {"EVTYPE", "4"}, {"UNITS", "V"}})},
    {"chandescriptions",
     "<CHANDESCRIPTIONS><CHANNEL><PROP>A</PROP><NAME>N</NAME></CHANNEL>"
     "<CHANNEL><PROP>A</PROP><NAME>N</NAME><PROP>B</PROP></CHANNEL></CHANDESCRIPTIONS>",
     "zeb5xml: in.xml: B: the record is left out\nzeb5xml: in.xml: B (2): the record is left out\n",
     written_channel({})},
    {"daqvariables",
     "<DAQvariables><DaqFloat><orvin>A</orvin><daqName>N</daqName></DaqFloat>"
     "<DaqFloat><orvin>A</orvin><daqName>M</daqName></DaqFloat></DAQvariables>",
     "zeb5xml: in.xml:1:82: another channel has the same <orvin> 'A': only event types are merged into it, "
     "and the rest of this one is ignored; the first is at 1:25 [duplicate-identity]\n",
     written_variables(written_variable("DaqFloat", {}))},
    {"daqvariables",
     "<DAQvariables><DaqFloat><orvin>A</orvin><daqName>N</daqName><bitTitle "
     "bit=\"1\">on</bitTitle></DaqFloat>"
     "</DAQvariables>",
     "zeb5xml: in.xml:1:61: channel 'A': <bitTitle> is ignored here: it is read in <DaqBits> only "
     "[misplaced-element]\n",
     written_variables(written_variable("DaqFloat", {}))},
    // What check calls errors, and what no reader takes
    {"chandescriptions", channel("<PROP>A</PROP><SIZE>many</SIZE><COUNT>2O</COUNT>"),
     "zeb5xml: in.xml:1:42: channel 'A': <SIZE>: 'many' is no number; the reader keeps 0 [not-a-number]\n"
     "zeb5xml: in.xml:1:59: channel 'A': <COUNT>: 'O' after the number is ignored; the reader keeps 2 "
     "[number-tail]\n",
     written_channel({{"COUNT", "2"}, {"SIZE", "0"}})},
    {"envindexdict",
     "<ENVINDEXDICT><CHANNEL><INDEX>1</INDEX><PROP>P</PROP><DABS>0,5</DABS></CHANNEL></ENVINDEXDICT>",
     "zeb5xml: in.xml:1:54: entry 1: <DABS>: '0,5' has a decimal comma, at which reading ends; the reader "
     "keeps 0 [decimal-comma]\n",
     written_entry},
    {"chandescriptions", channel("<PROP>A</PROP><UNIT>V</UNIT><UNITS si=\"yes\">V</UNITS>"),
     "zeb5xml: in.xml:1:42: channel 'A': no reader knows <UNIT>; did you mean <UNITS>? [unknown-element]\n"
     "zeb5xml: in.xml:1:63: channel 'A': no reader looks at the attribute 'si' of <UNITS> "
     "[ignored-attribute]\n",
     written_channel({{"UNITS", "V"}})},
    {"chandescriptions",
     channel("text<PROP>A</PROP><BIT_NAME>on</BIT_NAME><UNITS>V</UNITS><UNITS>kV</UNITS>"),
     "zeb5xml: in.xml:1:28: the text 'text' of <CHANNEL> is not read [ignored-text]\n"
     "zeb5xml: in.xml:1:46: channel 'A': <BIT_NAME> is ignored: there is no bit that it belongs to "
     "[orphan-element]\n"
     "zeb5xml: in.xml:1:85: channel 'A': <UNITS> replaces the value that was read before; the first is at "
     "1:69 [repeated-element]\n",
     written_channel({{"UNITS", "kV"}})},
    {"chandescriptions",
     "<CHANDESCRIPTIONS><CHANNEL><PROP/><UNITS>V</UNITS></CHANNEL><CHANNEL/></CHANDESCRIPTIONS>",
     "zeb5xml: in.xml:1:28: <PROP> is empty: the channel is not read [empty-identity]\n"
     "zeb5xml: in.xml:1:61: <CHANNEL> has no <PROP>: the channel is not read [missing-identity]\n",
     written_channels("")},
};

TEST_F(ConvertLosses, AreNamedAndNothingIsWritten) {
    for (const loss_case &row : loss_cases) {
        EXPECT_EQ(convert(row.document, {"--to", row.form}), (command_result{1, "", row.losses + refusal}));
        EXPECT_EQ(folder.text("out.xml"), "old");
        EXPECT_EQ(files(), 2);
    }
}

TEST_F(ConvertLosses, AreNamedAndAcceptedWhenForced) {
    for (const loss_case &row : loss_cases) {
        folder.write("out.xml", "old");
        const std::string since = local_date();
        EXPECT_EQ(convert(row.document, {"--to", row.form, "--force"}), (command_result{0, "", row.losses}));
        const std::string text = folder.text("out.xml");
        EXPECT_EQ(row.text == written_entry ? without_date_line(text, "ENVINDEXDICT", since) : text,
                  row.text);
    }
}

// The micro sign once doubled at each pass
TEST_F(ConvertLosses, AreNoneWhereTheEncodingOfTheDocumentHasTheCharacter) {
    EXPECT_EQ(convert(channel("<PROP>A</PROP><UNITS>\xc2\xb5V</UNITS>"), {"--to", "chandescriptions"}),
              (command_result{0, "", ""}));
    const std::string once = folder.text("out.xml");
    EXPECT_EQ(once, written_channel({{"UNITS", "\xb5V"}}));
    EXPECT_EQ(convert(once, {"--to", "chandescriptions"}), (command_result{0, "", ""}));
    EXPECT_EQ(folder.text("out.xml"), once);
}

TEST_F(ConvertLosses, LeaveTheDocumentThatIsConvertedIntoItself) {
    const std::string document = channel("<PROP>A&amp;</PROP>");
    folder.write("in.xml", document);
    EXPECT_EQ(folder.run({"convert", "in.xml", "--to", "chandescriptions", "-o", "in.xml"}),
              (command_result{
                  1, "",
                  "zeb5xml: in.xml:1:28: channel 'A&': the text of <PROP> comes in pieces (a reference): "
                  "the reader keeps only '&' [lost-text]\n"
                  "zeb5xml: in.xml: &: prop_name: \"&\" makes the document ill-formed, as it is "
                  "written without escaping\n" +
                      std::string(refusal)}));
    EXPECT_EQ(folder.text("in.xml"), document);
}

TEST_F(ConvertLosses, ThatLieInTheFormAreNamedOnceAndAccepted) {
    const std::string document =
        "<CHANDESCRIPTIONS><CHANNEL><STREAM>1</STREAM><DTYPE>9</DTYPE><DB_KEY>2</DB_KEY><COUNT>3</COUNT>"
        "<SB_NAME>S</SB_NAME><PROP>A</PROP><DIM>0<STAT>1</STAT></DIM><SIZE>2</SIZE></CHANNEL>"
        "<CHANNEL><STREAM>4</STREAM><PROP>B</PROP><NAME>N</NAME></CHANNEL></CHANDESCRIPTIONS>";
    EXPECT_EQ(
        convert(document, {"--to", "daqvariables"}),
        (command_result{
            0, "",
            "zeb5xml: in.xml: daqvariables changes daq_name in 1 channel, such as A: daq_name: \"\" becomes "
            "\"!!!UNDEFINED!!!\"\n"
            "zeb5xml: in.xml: no reader takes stream from daqvariables: it changes in 2 channels, such as A: "
            "stream: 1 becomes 0\n"
            "zeb5xml: in.xml: no reader takes dtype from daqvariables: it changes in 1 channel, such as A: "
            "dtype: 0x9 (0:ENV_BLOCK) "
            "becomes "
            "0x0\n"
            "zeb5xml: in.xml: no reader takes count from daqvariables: it changes in 1 channel, such as A: "
            "count: 3 becomes 0\n"
            "zeb5xml: in.xml: no reader takes db_key from daqvariables: it changes in 1 channel, such as A: "
            "db_key: 2 becomes -1\n"
            "zeb5xml: in.xml: no reader takes sb_name from daqvariables: it changes in 1 channel, such as A: "
            "sb_name: \"S\" becomes "
            "\"\"\n"
            "zeb5xml: in.xml: no reader takes dims.stats from daqvariables: it changes in 1 channel, such as "
            "A: "
            "dims[0].stats[1]: "
            "{\"stat\":1,\"stat_name\":\"\",\"stat_desc\":\"\",\"units\":\"\"} becomes nothing\n"}));
    EXPECT_EQ(folder.text("out.xml"),
              written_variables(
                  written_variable("DaqFloatMatrix",
                                   {{"daqName", "!!!UNDEFINED!!!"}, {"DBKey", "2"}, {"sbName", "S"}},
                                   "<firstIndex>0</firstIndex>\n<lastIndex>1</lastIndex>\n"
                                   "<dimension id=\"0\">\n<name></name>\n<description></description>\n"
                                   "<units></units>\n</dimension>\n") +
                  written_variable("DaqFloat", {{"orvin", "B"}})));
}

TEST_F(ConvertLosses, AreNotWhatALaterChannelCompletes) {
    EXPECT_EQ(convert("<CHANDESCRIPTIONS><CHANNEL><PROP>A</PROP><NAME>N</NAME><BIT>1</BIT></CHANNEL>"
                      "<CHANNEL><STREAM>2</STREAM><EVTYPE>4</EVTYPE><DTYPE>1</DTYPE><PROP>A</PROP>"
                      "<NAME>N</NAME><BIT>1</BIT></CHANNEL></CHANDESCRIPTIONS>",
                      {"--to", "chandescriptions"}),
              (command_result{0, "", ""}));
}

// Documents that check warns about, as a reader takes them otherwise than it seems
TEST_F(ConvertLosses, AreNotWhatStandsElsewhereButIsRead) {
    EXPECT_EQ(convert(channel("<PROP> A </PROP><DIM_DESCR>of old</DIM_DESCR><DIM>0<UNITS>V</UNITS></DIM>"
                              "<BIT>1</BIT><BIT>1</BIT><EVTYPE>268435456</EVTYPE>"),
                      {"--to", "chandescriptions"}),
              (command_result{0, "", ""}));
}

// No record has a place for these
TEST_F(ConvertLosses, OfElementsThatAreForOtherProgramsAreNamedOnceAndAccepted) {
    const auto variable = [](const std::string &name, const std::string &elements) {
        return "<DaqFloat><orvin>" + name + "</orvin><daqName>N</daqName>\n" + elements + "</DaqFloat>";
    };
    EXPECT_EQ(convert("<DAQvariables>" +
                          variable("A", "<DBKey>-1</DBKey><sbName></sbName><firstIndex>0</firstIndex>"
                                        "<freq>1</freq>") +
                          variable("B", "<DBKey>7</DBKey><sbName>SRV</sbName><firstIndex>3</firstIndex>"
                                        "<freq>-1</freq>") +
                          variable("C", "<DBKey>8</DBKey><freq> 2 </freq>") +
                          variable("D", "<DBKey>9</DBKey>") + "</DAQvariables>",
                      {"--to", "chandescriptions"}),
              (command_result{0, "",
                              "zeb5xml: in.xml:3:1: no reader takes <DBKey>: '7' is left out, and 2 more\n"
                              "zeb5xml: in.xml:3:17: no reader takes <sbName>: 'SRV' is left out\n"
                              "zeb5xml: in.xml:3:37: no reader takes <firstIndex>: '3' is left out\n"
                              "zeb5xml: in.xml:4:17: no reader takes <freq>: '2' is left out\n"}));
    const std::string dimension = channel("<PROP>A</PROP><DIM>0<DIM_START>1e3</DIM_START></DIM>");
    const std::string line = "zeb5xml: in.xml:1:48: no reader takes <DIM_START>: '1e3' is left out\n";
    EXPECT_EQ(convert(dimension, {"--to", "chandescriptions"}), (command_result{0, "", line}));
    EXPECT_EQ(convert(dimension, {"--to", "table"}), (command_result{0, "", ""}));
    EXPECT_EQ(folder.run({"merge", "in.xml", "-o", "out.xml"}), (command_result{0, "", line}));
}

// The reader in memory reports each bit once before its title comes
TEST_F(ConvertLosses, AreNotBitsWithoutATitle) {
    EXPECT_EQ(convert("<DAQvariables><DaqBits><orvin>A</orvin><daqName>N</daqName>"
                      "<bitTitle bit=\"1\">on</bitTitle></DaqBits></DAQvariables>",
                      {"--to", "chandescriptions"}),
              (command_result{0, "", ""}));
}

// UTF-8 under another label is read as other characters. A document gets the same bytes under the same label
TEST_F(ConvertLosses, OfAWrongEncodingAreThoseOfText) {
    const std::string document = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n" +
                                 channel("<PROP>A</PROP><UNITS>\xc2\xb5V</UNITS>");
    EXPECT_EQ(convert(document, {"--to", "chandescriptions"}), (command_result{0, "", ""}));
    EXPECT_EQ(folder.text("out.xml"), written_channel({{"UNITS", "\xc2\xb5V"}}));
    EXPECT_EQ(convert(document, {"--to", "table"}),
              (command_result{1, "",
                              "zeb5xml: in.xml:2:49: the characters beyond ASCII are UTF-8, but the document "
                              "is labelled 'ISO-8859-1': readers make other characters of them "
                              "[encoding-mismatch]\n" +
                                  std::string(refusal)}));
}

TEST_F(ConvertLosses, OfTextAreTextsThatBreakARowAndNumbersThatLoseDigits) {
    const loss_case text_cases[] = {
        {"table", channel("<PROP>\xc2\xb5</PROP><SB_NAME>a\tb</SB_NAME>"), "",
         "0\t0\tN\t\xc2\xb5\t0\t\"\"\t\"\"\t1\t0\t0\n"},
        {"table", channel("<PROP>A</PROP><DESC>a\tb\"c\"\nd</DESC><BIT>1<BIT_NAME>on\n</BIT_NAME></BIT>"),
         "zeb5xml: in.xml: A: prop_desc: \"a\\x09b\\\"c\\\"\\x0ad\" breaks its row, as it is written without "
         "escaping\n"
         "zeb5xml: in.xml: A: bits.bit_name: \"on\\x0a\" breaks its row, as it is written without escaping\n",
         "0\t0\tN\tA\t0\t\"a\tb\"c\"\nd\"\t\"\"\t1\t1\t0\n1\ton\n\t\"\"\n"},
        {"summary", channel("<PROP>A</PROP><DESC>a\tb</DESC>"), "",
         "                                                 N\t1\tUNKNOWN\n"},
        {"table",
         "<ENVINDEXDICT><CHANNEL><INDEX>1</INDEX><PROP>P</PROP><DABS>1e-7</DABS><DREL>1</DREL></CHANNEL>"
         "<CHANNEL><INDEX>2</INDEX><PROP>Q</PROP><DABS>0.5</DABS><DREL>1.2345678</DREL></CHANNEL>"
         "</ENVINDEXDICT>",
         "zeb5xml: in.xml: index 1: env_ch_abs_delta: 1e-07 becomes 0\n"
         "zeb5xml: in.xml: index 2: env_ch_rel_delta: 1.2345678 becomes 1.234568\n",
         "1\tP\t0.000000\t1.000000\n2\tQ\t0.500000\t1.234568\n"},
    };
    for (const loss_case &row : text_cases) {
        folder.write("out.xml", "old");
        const int status = row.losses.empty() ? 0 : 1;
        EXPECT_EQ(convert(row.document, {"--to", row.form}),
                  (command_result{status, "", row.losses + (status == 0 ? "" : refusal)}));
        EXPECT_EQ(folder.text("out.xml"), status == 0 ? row.text : "old");
        EXPECT_EQ(convert(row.document, {"--to", row.form, "--force"}), (command_result{0, "", row.losses}));
        EXPECT_EQ(folder.text("out.xml"), row.text);
    }
}

TEST_F(ConvertLosses, OfTextAreRecordsThatAreLeftOut) {
    const std::string twice = "<CHANDESCRIPTIONS><CHANNEL><PROP>A</PROP><NAME>N</NAME></CHANNEL>"
                              "<CHANNEL><PROP>A</PROP><NAME>M</NAME></CHANNEL></CHANDESCRIPTIONS>";
    for (const char *form : {"table", "summary", "chandescriptions"})
        EXPECT_EQ(convert(twice, {"--to", form, "--keep-duplicates"}),
                  (command_result{1, "",
                                  "zeb5xml: in.xml: A (2): the record is left out\n" + std::string(refusal)}))
            << form;
    folder.write("in.jsonl", folder.run({"export", "in.xml"}).out);
    EXPECT_EQ(folder.run({"convert", "in.jsonl", "--from", "json", "--to", "table", "--force"}),
              (command_result{0, "0\t0\tN\tA\t0\t\"\"\t\"\"\t1\t0\t0\n",
                              "zeb5xml: in.jsonl: A (2): the record is left out\n"}));
}

// Of a document that holds masks already, for example
TEST_F(ConvertLosses, OfShiftingAreNumbersThatAreOfNoType) {
    const std::string document =
        "<CHANDESCRIPTIONS><CHANNEL><EVTYPE>31</EVTYPE><DTYPE>62</DTYPE><PROP>A</PROP><NAME>N</NAME></"
        "CHANNEL>"
        "<CHANNEL><EVTYPE>48</EVTYPE><DTYPE>-2147483640</DTYPE><PROP>B</PROP><NAME>N</NAME></CHANNEL>"
        "<CHANNEL><EVTYPE>32</EVTYPE><DTYPE>63</DTYPE><PROP>B</PROP><NAME>N</NAME></CHANNEL>"
        "<CHANNEL><EVTYPE>0</EVTYPE><DTYPE>31</DTYPE><PROP>C</PROP><NAME>N</NAME></CHANNEL></"
        "CHANDESCRIPTIONS>";
    const std::string lines =
        "zeb5xml: in.xml: B: ev_type: 48 is no number of an event type, which go from 0 to 31\n"
        "zeb5xml: in.xml: B: dtype: -2147483640 is no number of a block type, which go from 0 to 30 and from "
        "32 to 62\n"
        "zeb5xml: in.xml: B (2): ev_type: 32 is no number of an event type, which go from 0 to 31\n"
        "zeb5xml: in.xml: B (2): dtype: 63 is no number of a block type, which go from 0 to 30 and from 32 "
        "to 62\n"
        "zeb5xml: in.xml: C: dtype: 31 is no number of a block type, which go from 0 to 30 and from 32 to "
        "62\n";
    EXPECT_EQ(convert(document, {"--to", "chandescriptions", "--shift", "--keep-duplicates"}),
              (command_result{
                  1, "", lines + "zeb5xml: in.xml: B (2): the record is left out\n" + std::string(refusal)}));
    EXPECT_EQ(convert(channel("<PROP>A</PROP><EVTYPE>31</EVTYPE><DTYPE>62</DTYPE>"),
                      {"--to", "chandescriptions", "--shift"}),
              (command_result{0, "", ""}));
}

// The name that a summary holds is told; the rest it never holds
TEST_F(ConvertLosses, OfMergingAreThoseThatTheFormWouldHold) {
    const std::string twice =
        "<CHANDESCRIPTIONS><CHANNEL><PROP>A</PROP><NAME>N</NAME><DESC>D</DESC></CHANNEL>"
        "<CHANNEL><PROP>A</PROP><NAME>M</NAME><DESC>E</DESC></CHANNEL></CHANDESCRIPTIONS>";
    EXPECT_EQ(convert(twice, {"--to", "summary"}),
              (command_result{1, "",
                              "zeb5xml: in.xml: A (2), merged into the first: daq_name: \"M\" gives way to "
                              "\"N\"\n" +
                                  std::string(refusal)}));
}

// The signal comes while the new file is written: the document is large, and it is waited for that file
TEST_F(ConvertLosses, OfTheCommandItselfLeaveNoNewFile) {
    std::string channels;
    for (int i = 0; i < 60'000; ++i)
        channels += "<CHANNEL><PROP>PROPERTY/" + std::to_string(i) + "</PROP><NAME>N</NAME></CHANNEL>";
    folder.write("in.xml", "<CHANDESCRIPTIONS>" + channels + "</CHANDESCRIPTIONS>");
    for (const int ending : {SIGINT, SIGTERM, SIGHUP}) {
        const command_result seen =
            folder.run({"convert", "in.xml", "--to", "chandescriptions", "-o", "out.xml"}, "", [&] {
                if (fork() != 0)
                    return; // the command; its child sends the signal
                while (files() < 3)
                    usleep(50);
                kill(getppid(), ending);
                _exit(0);
            });
        EXPECT_EQ(seen, (command_result{-ending, "", ""}));
        EXPECT_EQ(files(), 2);
        EXPECT_EQ(folder.text("out.xml"), "old");
    }
}

} // namespace
