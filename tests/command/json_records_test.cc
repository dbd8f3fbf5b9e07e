/// `zeb5xml convert --from json`.

#include <gtest/gtest.h>

#include "support/command_runner.h"
#include "support/dated_documents.h"

namespace {

const char table_of_a[] = "0\t4\tN\tA\t0\t\"\"\t\"\"\t1\t0\t0\n";

class JsonRecords : public testing::Test {
protected:
    command_result convert(const std::string &json, const std::string &form = "table") const {
        return folder.run({"convert", "--from", "json", "-", "--to", form}, json);
    }

    command_folder folder;
};

TEST_F(JsonRecords, AreObjectsOrOneArrayInAnyLayout) {
    const std::string object = R"({"kind":"channel","prop_name":"A","daq_name":"N","ev_type":4})";
    const std::string other = R"({ "kind" : "channel",
      "prop_name" : "B", "ev_type_names" : ["BOR"], "units" : null, "source" : "x", "max_size": 7.0 })";
    const std::string table_of_b = "0\t0\t!!!UNDEFINED!!!\tB\t0\t\"\"\t\"\"\t7\t0\t0\n";
    for (const std::string &json :
         {object + other, object + "\n" + other + "\n", "[" + object + "," + other + "]",
          "\n [\n" + object + "\n,\n" + other + "\n]\n"})
        EXPECT_EQ(convert(json), (command_result{0, table_of_a + table_of_b, ""})) << json;
}

TEST_F(JsonRecords, NeedNoKindWhenTheFormTellsIt) {
    const std::pair<const char *, std::string> dictionaries[] = {
        {"[]", ""},
        {R"({"index":1,"env_prop":"P","env_ch_abs_delta":"inf","env_ch_rel_delta":"-inf"})",
         "<CHANNEL>\n<INDEX>1</INDEX>\n<PROP>P</PROP>\n<DABS>inf</DABS>\n<DREL>-inf</DREL>\n</CHANNEL>\n"},
    };
    for (const auto &[json, entries] : dictionaries) {
        const std::string since = local_date();
        command_result seen = convert(json, "envindexdict");
        seen.out = without_date_line(seen.out, "ENVINDEXDICT", since);
        EXPECT_EQ(seen, (command_result{
                            0, xml_declaration + "<ENVINDEXDICT>\n" + entries + "</ENVINDEXDICT>\n\n", ""}));
    }
    EXPECT_EQ(convert("[]"), (command_result{1, "",
                                             "zeb5xml: standard input: holds no record that tells which kind "
                                             "the table is of\n"}));
}

// The largest float, which has more digits than it is written with, and the two texts that stand for no
// number
TEST_F(JsonRecords, HoldEveryFloat) {
    EXPECT_EQ(convert(R"({"kind":"dictionary entry","index":1,"env_prop":"P",)"
                      R"("env_ch_abs_delta":3.40282347e+38,"env_ch_rel_delta":"nan"})"),
              (command_result{0, "1\tP\t340282346638528859811704183484516925440.000000\tnan\n", ""}));
}

TEST_F(JsonRecords, HaveNoLossesWhenTheyAreWritten) {
    EXPECT_EQ(convert(R"({"prop_name":"&","daq_name":"N"})", "chandescriptions"),
              (command_result{
                  1, "",
                  "zeb5xml: standard input: &: prop_name: \"&\" makes the document ill-formed, as it is "
                  "written without escaping\n"
                  "zeb5xml: standard input: nothing written, as values would be lost; --force writes "
                  "all the same\n"}));
    // Of records with one identity, the place tells which one it is, also when one is left out
    EXPECT_EQ(
        convert("{\"index\":1,\"env_prop\":\"\xce\xa9\"} {\"index\":1,\"env_prop\":\"a\"} {\"index\":2}",
                "envindexdict"),
        (command_result{
            1, "",
            "zeb5xml: standard input: index 1: env_prop: \"\xce\xa9\" becomes \"\xc3\x8e\xc2\xa9\"\n"
            "zeb5xml: standard input: index 2: the record is left out\n"
            "zeb5xml: standard input: nothing written, as values would be lost; --force writes "
            "all the same\n"}));
    // One without a name once had none in the message either
    EXPECT_EQ(
        convert(R"({"prop_name":"","daq_name":"N","units":"&"})", "chandescriptions"),
        (command_result{1, "",
                        "zeb5xml: standard input: '': units: \"&\" makes the document ill-formed, as it is "
                        "written without escaping\n"
                        "zeb5xml: standard input: nothing written, as values would be lost; --force writes "
                        "all the same\n"}));
}

struct refusal {
    const char *json;
    const char *reason;
};
const refusal refusals[] = {
    {"{\"prop_name\":\"A\"}", "1: record 1: has no kind: channel or dictionary entry"},
    {"{\"kind\":\"event\"}", "1: record 1: its kind must be channel or dictionary entry here"},
    {"{\"kind\":\"channel\"}", "1: record 1: has no prop_name"},
    {"{\"kind\":\"channel\",\"prop_name\":null}", "1: record 1: has no prop_name"},
    {"{\"kind\":\"channel\",\"prop_name\":\"A\",\"unit\":\"V\"}",
     "1: record 1: 'unit' is no field of a channel; did you mean 'units'?"},
    {"{\"kind\":\"channel\",\"prop_name\":1}", "1: record 1: prop_name: is no text"},
    {"{\"kind\":\"channel\",\"prop_name\":\"\\u0000\"}", "1: record 1: prop_name: has a NUL character"},
    {"{\"kind\":\"channel\",\"prop_name\":\"A\",\"units\":\"0123456789abcdef\"}",
     "1: record 1: units: is 16 bytes long; the field holds 15"},
    {"{\"kind\":\"channel\",\"prop_name\":\"A\",\"count\":2147483648}",
     "1: record 1: count: is not in the range from -2147483648 to 2147483647"},
    {"{\"kind\":\"channel\",\"prop_name\":\"A\",\"ev_type\":-1}",
     "1: record 1: ev_type: is not in the range from 0 to 4294967295"},
    {"{\"kind\":\"channel\",\"prop_name\":\"A\",\"count\":1.5}", "1: record 1: count: is no whole number"},
    {"{\"kind\":\"channel\",\"prop_name\":\"A\",\"count\":\"1\"}", "1: record 1: count: is no whole number"},
    {"{\"kind\":\"channel\",\"prop_name\":\"A\",\"bits\":3}", "1: record 1: bits: is no list"},
    {"{\"kind\":\"channel\",\"prop_name\":\"A\",\"bits\":[{\"bit\":1},{}]}",
     "1: record 1: bits[1]: has no bit"},
    {"{\"kind\":\"channel\",\"prop_name\":\"A\",\"units\":\"\\u20ac\",\"latin_1\":[\"units\"]}",
     "1: record 1: units: has a character that ISO-8859-1 has not"},
    {"{\"kind\":\"channel\",\"prop_name\":\"A\"} {\"kind\":\"dictionary entry\",\"index\":1}",
     "1: record 2: is of another kind than the records before"},
    {"[{\"kind\":\"channel\",\"prop_name\":\"A\"},[{}]]", "1: record 2: only objects may stand here"},
    {"[7]", "1: record 1: only objects may stand here"},
    {"\n7", "2: record 1: only objects may stand here"},
    {"[[]]", "1: record 1: only objects may stand here"},
    {"[{\"kind\":\"channel\",\"prop_name\":\"A\"}] 7", "1: record 2: only objects may stand here"},
    {"{\"kind\":\"channel\",\"prop_name\":\"A\",\"bits\":[3]}", "1: record 1: bits[0]: is no object"},
    // No float holds these
    {"{\"kind\":\"dictionary entry\",\"index\":1,\"env_ch_abs_delta\":1e300}",
     "1: record 1: env_ch_abs_delta: does not fit into a float"},
    {"{\"kind\":\"dictionary entry\",\"index\":1,\"env_ch_abs_delta\":-3.5e38}",
     "1: record 1: env_ch_abs_delta: does not fit into a float"},
    {"{\"kind\":\"dictionary entry\",\"index\":1,\"env_ch_abs_delta\":\"0x10\"}",
     "1: record 1: env_ch_abs_delta: is no number"},
    {"{\"kind\":\"dictionary entry\",\"index\":1,\"env_ch_abs_delta\":\"\"}",
     "1: record 1: env_ch_abs_delta: is no number"},
    // The record begins in line 3
    {"{\"kind\":\"channel\",\"prop_name\":\"A\"}\n\n{\n\"kind\":\"channel\",\n\"prop_name\":\"B\","
     "\n\"count\":[]}",
     "3: record 2: count: is no whole number"},
    // What is no JSON
    {"[{\"kind\":\"channel\",\"prop_name\":\"A\"}\n",
     "1: record 2: syntax error while parsing array - unexpected end of input; expected ']'"},
    {"{\"kind\":\"channel\",\"prop_name\":\"A\"}\n\n{\"kind\":\"channel\",\"prop_name\":\"\xb5\"}",
     "3: record 2: syntax error while parsing value - invalid string: ill-formed UTF-8 byte; last read: "
     "'\"\\xb5'"},
    {"<BMR/>", "1: record 1: syntax error while parsing value - invalid literal; last read: '<'"},
    // A key that stands twice: the later value once won in silence
    {"{\"kind\":\"channel\",\"prop_name\":\"A\",\n\"units\":\"V\",\n\"units\":\"V\"}",
     "3: record 1: the key \"units\" stands twice in one object"},
    {"[{\"kind\":\"channel\",\"prop_name\":\"A\"},\n"
     "{\"kind\":\"channel\",\"prop_name\":\"B\",\"bits\":[{\"bit\":1},\n{\"bit\":2,\"bit\":2}]}]",
     "3: record 2: the key \"bit\" stands twice in one object"},
};

TEST_F(JsonRecords, AreRefusedWhenARecordCannotHoldThem) {
    for (const refusal &row : refusals)
        EXPECT_EQ(convert(row.json),
                  (command_result{1, "", "zeb5xml: standard input:" + std::string(row.reason) + "\n"}))
            << row.json;
}

TEST_F(JsonRecords, HaveNoTypeNumbersAndNoDuplicates) {
    for (const std::string option : {"--shift", "--keep-duplicates"})
        EXPECT_EQ(
            folder.run({"convert", "--from", "json", "-", "--to", "table", option}, "[]"),
            (command_result{1, "",
                            "zeb5xml: standard input: " + option + " is for XML: JSON is taken as it is\n"}));
}

// JSON ends at a NUL byte for some programs, and what followed was once dropped in silence
TEST_F(JsonRecords, AreRefusedWhereANulByteStands) {
    const std::string record = R"({"kind":"channel","prop_name":"A"})", nul(1, '\0');
    const std::pair<std::string, const char *> inputs[] = {
        {record + "\n" + nul + record, "2: record 2"},
        {"[" + record + "]" + nul + "[]", "1: record 2"},
        {"[" + record + ",\n" + nul, "2: record 2"},
        {"\n" + record.substr(0, 20) + nul, "2: record 1"},
        {"{" + nul, "1: record 1"}, // as UTF-16 has it
        {record.substr(0, record.size() - 2) + nul + "\"}", "1: record 1"},
    };
    for (const auto &[json, where] : inputs)
        EXPECT_EQ(convert(json),
                  (command_result{
                      1, "", "zeb5xml: standard input:" + std::string(where) + ": there is a NUL byte\n"}));
}

TEST_F(JsonRecords, MayBeginWithAByteOrderMark) {
    for (const char *json : {R"({"kind":"channel","prop_name":"A","daq_name":"N","ev_type":4})",
                             R"([{"kind":"channel","prop_name":"A","daq_name":"N","ev_type":4}])"})
        EXPECT_EQ(convert(std::string("\xef\xbb\xbf") + json), (command_result{0, table_of_a, ""}));
}

// A program before in the pipe may have failed, and the old file is to stay
TEST_F(JsonRecords, AreNotMadeOfAnEmptyDocument) {
    folder.write("out.xml", "old");
    for (const char *json : {"", " \n"})
        EXPECT_EQ(
            folder.run({"convert", "--from", "json", "-", "--to", "chandescriptions", "-o", "out.xml"}, json),
            (command_result{1, "",
                            "zeb5xml: standard input: the document is empty; no records at all are []\n"}));
    EXPECT_EQ(folder.text("out.xml"), "old");
}

// The blocks in which a file is read do not show
TEST_F(JsonRecords, KnowTheirLineInALongFile) {
    std::string lines;
    for (int i = 0; i < 5000; ++i)
        lines += R"({"kind":"channel","prop_name":")" + std::to_string(i) + "\"}\n";
    EXPECT_EQ(
        convert(lines + "{}\n"),
        (command_result{
            1, "", "zeb5xml: standard input:5001: record 5001: has no kind: channel or dictionary entry\n"}));
    EXPECT_EQ(
        convert(lines + "\n{\"a\":0,\"a\":0}\n"),
        (command_result{
            1, "", "zeb5xml: standard input:5002: record 5001: the key \"a\" stands twice in one object\n"}));
}

} // namespace
