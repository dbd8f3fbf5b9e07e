/// `zeb5xml export`: every field of every kind of record, in every form.

#include <gtest/gtest.h>

#include "support/command_runner.h"

namespace {

const char channels[] =
    "<CHANDESCRIPTIONS>"
    "<CHANNEL><STREAM>1</STREAM><EVTYPE>12</EVTYPE><DTYPE>-2147483136</DTYPE><DB_KEY>7</DB_KEY><COUNT>2</"
    "COUNT>"
    "<SB_NAME>SRV</SB_NAME><PROP>A/B/C</PROP><NAME>CH.C</NAME><SETPOINT>1</SETPOINT><SUBSYSTEM>DIAG</"
    "SUBSYSTEM>"
    "<UNITS>mm</UNITS><DESC>a, \"b\"</DESC><SIZE>4</SIZE>"
    "<BIT>3<BIT_NAME>on</BIT_NAME><BIT_DESCR>switched on</BIT_DESCR></BIT>"
    "<DIM>0<DIM_NAME>x</DIM_NAME><DIM_UNITS>us</DIM_UNITS><DIM_DESCR>axis</DIM_DESCR>"
    "<STAT>1<STAT_NAME>RMS</STAT_NAME><STAT_UNITS>mm</STAT_UNITS><STAT_DESCR>of all</STAT_DESCR></STAT></DIM>"
    "</CHANNEL><CHANNEL><PROP>A/B/D</PROP></CHANNEL></CHANDESCRIPTIONS>";

const std::string first_channel =
    R"("kind":"channel","prop_name":"A/B/C","daq_name":"CH.C","stream":1,"ev_type":12,)"
    R"("ev_type_names":["BOR","EOR"],"dtype":2147484160,"dtype_names":["BLOCK_1CHAN_2010"],"count":2,"db_key":7,)"
    R"("prop_desc":"a, \"b\"","units":"mm","max_size":4,"sb_name":"SRV","set_point":1,"subsystem":"DIAG",)"
    R"("bits":[{"bit":3,"bit_name":"on","bit_desc":"switched on"}],)"
    R"("dims":[{"dim":0,"dim_name":"x","dim_desc":"axis","units":"us",)"
    R"("stats":[{"stat":1,"stat_name":"RMS","stat_desc":"of all","units":"mm"}]}]})";
const std::string second_channel =
    R"("kind":"channel","prop_name":"A/B/D","daq_name":"","stream":0,"ev_type":0,"ev_type_names":[],)"
    R"("dtype":0,"dtype_names":[],"count":0,"db_key":-1,"prop_desc":"","units":"","max_size":1,"sb_name":"",)"
    R"("set_point":0,"subsystem":"","bits":[],"dims":[]})";

const char events[] = "<BMR><EVENT><TYPE>4</TYPE><TMASK>0x10</TMASK><MINTIMESEC>5</MINTIMESEC>"
                      "<MINTIMEUSEC>6</MINTIMEUSEC><PRIORITY>7</PRIORITY><SBLOCK>SRV</SBLOCK>"
                      "<CHLIST><CHAN>A</CHAN><CHAN>B</CHAN></CHLIST></EVENT></BMR>";
const char dictionary[] = "<ENVINDEXDICT><CHANNEL><INDEX>3</INDEX><PROP>A/B/C</PROP><DABS>0.1</DABS>"
                          "<DREL>inf</DREL></CHANNEL></ENVINDEXDICT>";
const char camera[] = "<Camera><Integer Name=\"Gain\"><PvRename Name=\"G\"/><ToolTip>T</ToolTip>"
                      "<Description>D</Description></Integer></Camera>";

class Export : public testing::Test {
protected:
    Export() {
        folder.write("channels.xml", channels);
        folder.write("events.xml", events);
        folder.write("dictionary.xml", dictionary);
        folder.write("camera.xml", camera);
    }
    command_result run(const std::vector<std::string> &arguments, const std::string &input = "") const {
        std::vector<std::string> all = {"export"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        return folder.run(all, input);
    }

    command_folder folder;
};

TEST_F(Export, HoldsEveryFieldOfEveryKind) {
    EXPECT_EQ(run({"channels.xml"}),
              (command_result{0, "{" + first_channel + "\n{" + second_channel + "\n", ""}));
    EXPECT_EQ(
        run({"events.xml"}),
        (command_result{0,
                        R"({"kind":"event","evtype":4,"evtype_name":"ENV","timeup":5,"timelow":6,"tmask":16,)"
                        R"("priority":7,"sb_list":[{"sb_list":"SRV","ch_list":["A","B"]}]})"
                        "\n",
                        ""}));
    EXPECT_EQ(
        run({"dictionary.xml"}),
        (command_result{0,
                        R"({"kind":"dictionary entry","index":3,"env_prop":"A/B/C","env_ch_abs_delta":0.1,)"
                        R"("env_ch_rel_delta":"inf"})"
                        "\n",
                        ""}));
    EXPECT_EQ(
        run({"camera.xml"}),
        (command_result{0,
                        R"({"kind":"feature","name":"Gain","type":1,"type_name":"Integer","extension":"G",)"
                        R"("tooltip":"T","description":"D"})"
                        "\n",
                        ""}));
}

TEST_F(Export, NamesTheSourcesWhenThereAreSeveral) {
    EXPECT_EQ(run({"channels.xml", "-", "--format", "json"}, channels),
              (command_result{0,
                              "[\n{\"source\":\"channels.xml\"," + first_channel +
                                  ",\n{\"source\":\"channels.xml\"," + second_channel +
                                  ",\n{\"source\":\"standard input\"," + first_channel +
                                  ",\n{\"source\":\"standard input\"," + second_channel + "\n]\n",
                              ""}));
}

TEST_F(Export, MakesATable) {
    const std::string heading =
        "prop_name,daq_name,stream,ev_type,ev_type_names,dtype,dtype_names,count,db_key,"
        "prop_desc,units,max_size,sb_name,set_point,subsystem,bits,dims,latin_1";
    const std::string bits = R"("[{""bit"":3,""bit_name"":""on"",""bit_desc"":""switched on""}]")";
    const std::string dims =
        R"("[{""dim"":0,""dim_name"":""x"",""dim_desc"":""axis"",""units"":""us"",""stats"":)"
        R"([{""stat"":1,""stat_name"":""RMS"",""stat_desc"":""of all"",""units"":""mm""}]}]")";
    const std::string first =
        "A/B/C,CH.C,1,12,BOR:EOR,2147484160,BLOCK_1CHAN_2010,2,7,\"a, \"\"b\"\"\",mm,4,SRV,"
        "1,DIAG," +
        bits + "," + dims + ",\r\n";
    const std::string second = "A/B/D,,0,0,,0,,0,-1,,,1,,0,,[],[],\r\n";
    EXPECT_EQ(run({"channels.xml", "--format", "csv"}),
              (command_result{0, heading + "\r\n" + first + second, ""}));
    EXPECT_EQ(run({"channels.xml", "-", "--format", "csv"}, channels),
              (command_result{0,
                              "source," + heading + "\r\nchannels.xml," + first + "channels.xml," + second +
                                  "standard input," + first + "standard input," + second,
                              ""}));
}

/// A text, and what stands for it in a cell.
struct cell_case {
    const char *written; // in the document
    const char *csv;     // RFC 4180: quotes around what separates cells or rows, and doubled inside
    const char *tsv;
};
const cell_case cell_cases[] = {
    {"plain", "plain", "plain"},
    {" a ", " a ", " a "},
    {"a,b", "\"a,b\"", "a,b"},
    {"a;b'", "a;b'", "a;b'"},
    {"a\"b", "\"a\"\"b\"", "a\"b"},
    {"\"", "\"\"\"\"", "\""},
    {"a\tb", "a\tb", "a\\tb"},
    {"a\nb", "\"a\nb\"", "a\\nb"},
    {"&#13;b", "\"\rb\"", "\\rb"},
    {"a\\tb\\", "a\\tb\\", "a\\\\tb\\\\"},
    {"\xc2\xb5\xe2\x80\xa8", "\xc2\xb5\xe2\x80\xa8", "\xc2\xb5\xe2\x80\xa8"},
};

TEST_F(Export, KeepsEveryTextInATable) {
    std::string entries, csv = "index,env_prop,env_ch_abs_delta,env_ch_rel_delta,latin_1\r\n",
                         tsv = "index\tenv_prop\tenv_ch_abs_delta\tenv_ch_rel_delta\tlatin_1\n";
    for (const cell_case &row : cell_cases) {
        entries += "<CHANNEL><INDEX>1</INDEX><PROP>" + std::string(row.written) + "</PROP></CHANNEL>";
        csv += "1," + std::string(row.csv) + ",0,0,\r\n";
        tsv += "1\t" + std::string(row.tsv) + "\t0\t0\t\n";
    }
    const std::string document = "<ENVINDEXDICT>" + entries + "</ENVINDEXDICT>";
    EXPECT_EQ(run({"-", "--format", "csv"}, document), (command_result{0, csv, ""}));
    EXPECT_EQ(run({"-", "--format", "tsv"}, document), (command_result{0, tsv, ""}));
}

TEST_F(Export, KeepsTheJsonOfACellAsItIs) {
    const std::string document =
        "<BMR><EVENT><TYPE>4</TYPE><SBLOCK>a\"b\\</SBLOCK><CHLIST><CHAN>c\td</CHAN></CHLIST>"
        "</EVENT></BMR>";
    EXPECT_EQ(run({"-", "--format", "csv"}, document),
              (command_result{0,
                              "evtype,evtype_name,timeup,timelow,tmask,priority,sb_list,latin_1\r\n"
                              R"(4,ENV,0,0,0,0,"[{""sb_list"":""a\""b\\"",""ch_list"":[""c\td""]}]",)"
                              "\r\n",
                              ""}));
    EXPECT_EQ(run({"-", "--format", "tsv"}, document),
              (command_result{0,
                              "evtype\tevtype_name\ttimeup\ttimelow\ttmask\tpriority\tsb_list\tlatin_1\n"
                              "4\tENV\t0\t0\t0\t0\t"
                              R"([{"sb_list":"a\\"b\\\\","ch_list":["c\\td"]}])"
                              "\t\n",
                              ""}));
}

TEST_F(Export, KeepsOneKindToATable) {
    const std::string table = "name,type,type_name,extension,tooltip,description,latin_1\r\n";
    EXPECT_EQ(
        run({"camera.xml", "events.xml", "--format", "csv"}),
        (command_result{1, "source," + table + "camera.xml,Gain,1,Integer,G,T,D,\r\n",
                        "zeb5xml: events.xml: is a document of kind 'event list': one table cannot hold it "
                        "beside the records before; export it apart\n"}));
}

TEST_F(Export, WritesNoRecordsAsAnEmptyList) {
    EXPECT_EQ(run({"-"}, "<BMR/>"), (command_result{0, "", ""}));
    EXPECT_EQ(run({"-", "--format", "json"}, "<BMR/>"), (command_result{0, "[\n]\n", ""}));
    EXPECT_EQ(
        run({"-", "--format", "csv"}, "<BMR/>"),
        (command_result{0, "evtype,evtype_name,timeup,timelow,tmask,priority,sb_list,latin_1\r\n", ""}));
}

TEST_F(Export, WritesWhatWasReadBeforeAnErrorAndSaysSo) {
    EXPECT_EQ(
        run({"-"}, "<ENVINDEXDICT><CHANNEL><INDEX>1</INDEX><PROP>P</PROP></CHANNEL><x></ENVINDEXDICT>"),
        (command_result{
            1,
            R"({"kind":"dictionary entry","index":1,"env_prop":"P","env_ch_abs_delta":0,"env_ch_rel_delta":0})"
            "\n",
            "Fatal Error at (file standard input, line 1, char 69): expected end of tag 'x'\n"
            "zeb5xml: standard input: not read without errors: only 1 entry exported\n"}));
}

// Texts

TEST_F(Export, WritesUtf8WhateverTheDocumentDeclares) {
    EXPECT_EQ(run({"-"}, "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><ENVINDEXDICT><CHANNEL>"
                         "<INDEX>1</INDEX><PROP>\xb5"
                         "A</PROP></CHANNEL></ENVINDEXDICT>"),
              (command_result{0,
                              "{\"kind\":\"dictionary entry\",\"index\":1,\"env_prop\":\"\xc2\xb5"
                              "A\","
                              R"("env_ch_abs_delta":0,"env_ch_rel_delta":0})"
                              "\n",
                              ""}));
}

// A field of 15 bytes cuts the last of eight characters in two
TEST_F(Export, TakesATextThatIsNotUtf8AsLatin1AndSaysSo) {
    const std::string whole = "\xc2\xb5\xc2\xb5\xc2\xb5\xc2\xb5\xc2\xb5\xc2\xb5\xc2\xb5";
    const std::string document = "<CHANDESCRIPTIONS><CHANNEL><PROP>\xc2\xb5</PROP><UNITS>" + whole +
                                 "\xc2\xb5</UNITS></CHANNEL></CHANDESCRIPTIONS>";
    std::string as_latin_1;
    for (int i = 0; i < 7; ++i)
        as_latin_1 += "\xc3\x82\xc2\xb5";
    as_latin_1 += "\xc3\x82";
    EXPECT_EQ(
        run({"-"}, document),
        (command_result{0,
                        "{\"kind\":\"channel\",\"prop_name\":\"\xc2\xb5\",\"daq_name\":\"\",\"stream\":0,"
                        "\"ev_type\":0,\"ev_type_names\":[],\"dtype\":0,\"dtype_names\":[],\"count\":0,"
                        "\"db_key\":-1,\"prop_desc\":\"\",\"units\":\"" +
                            as_latin_1 +
                            "\",\"max_size\":1,\"sb_name\":\"\",\"set_point\":0,\"subsystem\":\"\","
                            "\"bits\":[],\"dims\":[],\"latin_1\":[\"units\"]}\n",
                        ""}));
    EXPECT_EQ(run({"-", "--format", "tsv"}, document).out,
              "prop_name\tdaq_name\tstream\tev_type\tev_type_names\tdtype\tdtype_names\tcount\tdb_key\t"
              "prop_desc\tunits\tmax_size\tsb_name\tset_point\tsubsystem\tbits\tdims\tlatin_1\n"
              "\xc2\xb5\t\t0\t0\t\t0\t\t0\t-1\t\t" +
                  as_latin_1 + "\t1\t\t0\t\t[]\t[]\tunits\n");
}

} // namespace
