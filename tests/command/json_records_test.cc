/// `zeb5xml convert --from json`.

#include <gtest/gtest.h>

#include "support/command_runner.h"

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
    EXPECT_EQ(convert(R"({"index":1,"env_prop":"P","env_ch_abs_delta":"inf"})", "envindexdict").status, 0);
    EXPECT_EQ(convert("", "envindexdict").status, 0);
    EXPECT_EQ(convert(""), (command_result{1, "",
                                           "zeb5xml: standard input: holds no record that tells which kind "
                                           "the table is of\n"}));
}

TEST_F(JsonRecords, HaveNoLossesWhenTheyAreWritten) {
    EXPECT_EQ(convert(R"({"prop_name":"&","daq_name":"N"})", "chandescriptions"),
              (command_result{
                  1, "",
                  "zeb5xml: standard input: &: prop_name: \"&\" makes the document ill-formed, as it is "
                  "written without escaping\n"
                  "zeb5xml: standard input: nothing written, as values would be lost; --force writes "
                  "all the same\n"}));
}

struct refusal {
    const char *json;
    const char *reason;
};
const refusal refusals[] = {
    {"{\"prop_name\":\"A\"}", "record 1: has no kind: channel or dictionary entry"},
    {"{\"kind\":\"event\"}", "record 1: its kind must be channel or dictionary entry here"},
    {"{\"kind\":\"channel\"}", "record 1: has no prop_name"},
    {"{\"kind\":\"channel\",\"prop_name\":null}", "record 1: has no prop_name"},
    {"{\"kind\":\"channel\",\"prop_name\":\"A\",\"unit\":\"V\"}",
     "record 1: 'unit' is no field of a channel; did you mean 'units'?"},
    {"{\"kind\":\"channel\",\"prop_name\":1}", "record 1: prop_name: is no text"},
    {"{\"kind\":\"channel\",\"prop_name\":\"\\u0000\"}", "record 1: prop_name: has a NUL character"},
    {"{\"kind\":\"channel\",\"prop_name\":\"A\",\"units\":\"0123456789abcdef\"}",
     "record 1: units: is 16 bytes long; the field holds 15"},
    {"{\"kind\":\"channel\",\"prop_name\":\"A\",\"count\":2147483648}",
     "record 1: count: is not in the range from -2147483648 to 2147483647"},
    {"{\"kind\":\"channel\",\"prop_name\":\"A\",\"ev_type\":-1}",
     "record 1: ev_type: is not in the range from 0 to 4294967295"},
    {"{\"kind\":\"channel\",\"prop_name\":\"A\",\"count\":1.5}", "record 1: count: is no whole number"},
    {"{\"kind\":\"channel\",\"prop_name\":\"A\",\"count\":\"1\"}", "record 1: count: is no whole number"},
    {"{\"kind\":\"channel\",\"prop_name\":\"A\",\"bits\":3}", "record 1: bits: is no list"},
    {"{\"kind\":\"channel\",\"prop_name\":\"A\",\"bits\":[{\"bit\":1},{}]}", "record 1: bits[1]: has no bit"},
    {"{\"kind\":\"channel\",\"prop_name\":\"A\",\"units\":\"\\u20ac\",\"latin_1\":[\"units\"]}",
     "record 1: units: has a character that ISO-8859-1 has not"},
    {"{\"kind\":\"channel\",\"prop_name\":\"A\"} {\"kind\":\"dictionary entry\",\"index\":1}",
     "record 2: is of another kind than the records before"},
    {"[{\"kind\":\"channel\",\"prop_name\":\"A\"},[{}]]", "record 2: is no object"},
    {"[7]", "record 1: is no object"},
    {"[{\"kind\":\"channel\",\"prop_name\":\"A\"}", "record 2: parse error at line 1, column 36: syntax "
                                                    "error while parsing array - unexpected end of input; "
                                                    "expected ']'"},
    {"{\"kind\":\"channel\",\"prop_name\":\"\xb5\"}",
     "record 1: parse error at line 1, column 32: syntax error while parsing value - invalid string: "
     "ill-formed "
     "UTF-8 byte; last read: '\"\xb5'"},
};

TEST_F(JsonRecords, AreRefusedWhenARecordCannotHoldThem) {
    for (const refusal &row : refusals)
        EXPECT_EQ(convert(row.json),
                  (command_result{1, "", "zeb5xml: standard input: " + std::string(row.reason) + "\n"}))
            << row.json;
}

} // namespace
