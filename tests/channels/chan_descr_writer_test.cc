/// The two XML documents of the channel description writer: what stands in them, byte for byte. Where they go
/// is tested in chan_descr_writer_destinations_test.cc, the axes of the DIM elements in
/// chan_descriptions_writer_test.cc.

#include <climits>
#include <cstdint>

#include "support/chan_descr_writing.h"

namespace {

const char *const full_channel_lines = "<CHANNEL>\n"
                                       "<STREAM>7</STREAM>\n"
                                       "<EVTYPE>18</EVTYPE>\n"
                                       "<DTYPE>576</DTYPE>\n"
                                       "<DB_KEY>4711</DB_KEY>\n"
                                       "<COUNT>21</COUNT>\n"
                                       "<SB_NAME>BPM_SB</SB_NAME>\n"
                                       "<PROP>ORVIN.DIAG/BPM/12/CH00.TD</PROP>\n"
                                       "<NAME>BPM12</NAME>\n"
                                       "<SETPOINT>1</SETPOINT>\n"
                                       "<SUBSYSTEM>DIAGNOSTICS</SUBSYSTEM>\n"
                                       "<UNITS>mm</UNITS>\n"
                                       "<DESC>position of the beam</DESC>\n"
                                       "<SIZE>4</SIZE>\n"
                                       "<BIT>3\n"
                                       "<BIT_NAME>READY</BIT_NAME>\n"
                                       "<BIT_DESCR>ready to measure</BIT_DESCR>\n"
                                       "</BIT>\n"
                                       "<BIT>-1\n"
                                       "<BIT_NAME>FAULT</BIT_NAME>\n"
                                       "<BIT_DESCR>hardware fault</BIT_DESCR>\n"
                                       "</BIT>\n"
                                       "<DIM>0\n"
                                       "<DIM_NAME>time</DIM_NAME>\n"
                                       "<DIM_UNITS>us</DIM_UNITS>\n"
                                       "<DIM_DESCR>time in the pulse</DIM_DESCR>\n"
                                       "<STAT>5\n"
                                       "<STAT_NAME>mean</STAT_NAME>\n"
                                       "<STAT_UNITS>mm</STAT_UNITS>\n"
                                       "<STAT_DESCR>mean of the pulse</STAT_DESCR>\n"
                                       "</STAT>\n"
                                       "<STAT>6\n"
                                       "<STAT_NAME>rms</STAT_NAME>\n"
                                       "<STAT_UNITS>um</STAT_UNITS>\n"
                                       "<STAT_DESCR>spread in the pulse</STAT_DESCR>\n"
                                       "</STAT>\n"
                                       "</DIM>\n"
                                       "<DIM>1\n"
                                       "<DIM_NAME>bunch</DIM_NAME>\n"
                                       "<DIM_UNITS>1</DIM_UNITS>\n"
                                       "<DIM_DESCR>bunch number</DIM_DESCR>\n"
                                       "</DIM>\n"
                                       "</CHANNEL>\n";

/// A channel with nothing but `prop`, in each dialect.
std::string bare_channel_lines(const std::string &prop) {
    return "<CHANNEL>\n<STREAM>0</STREAM>\n<EVTYPE>0</EVTYPE>\n<DTYPE>0</DTYPE>\n<DB_KEY>-1</DB_KEY>\n"
           "<COUNT>0</COUNT>\n<SB_NAME></SB_NAME>\n<PROP>" +
           prop +
           "</PROP>\n<NAME>!!!UNDEFINED!!!</NAME>\n<SETPOINT>0</SETPOINT>\n<SUBSYSTEM></SUBSYSTEM>\n"
           "<UNITS></UNITS>\n<DESC></DESC>\n<SIZE>1</SIZE>\n</CHANNEL>\n";
}

std::string bare_variable_lines(const std::string &prop) {
    return "<DaqFloat>\n<evType>0</evType>\n<orvin>" + prop +
           "</orvin>\n<daqName>!!!UNDEFINED!!!</daqName>\n<DBKey>-1</DBKey>\n<setPoint>0</setPoint>\n"
           "<sbName></sbName>\n<subSystem></subSystem>\n<description></description>\n<units></units>\n"
           "<freq>1</freq>\n</DaqFloat>\n";
}

std::string bare_document(int format, const std::vector<std::string> &props) {
    std::string body;
    for (const std::string &prop : props)
        body += format == chandescriptions ? bare_channel_lines(prop) : bare_variable_lines(prop);
    return format == chandescriptions ? chandescriptions_document(body) : daqvariables_document(body);
}

} // namespace

TEST(ChanDescrWriter, WritesEveryFieldOfAChannelAsAnElement) {
    channel_list list;
    list.add(full_channel());
    EXPECT_EQ(xml_of(list, chandescriptions), chandescriptions_document(full_channel_lines));
}

TEST(ChanDescrWriter, WritesEveryFieldThatTheOtherDialectKnows) {
    channel_list list;
    list.add(full_channel());
    EXPECT_EQ(xml_of(list, daqvariables),
              daqvariables_document("<DaqFloatMatrix>\n"
                                    "<evType>18</evType>\n"
                                    "<orvin>ORVIN.DIAG/BPM/12/CH00.TD</orvin>\n"
                                    "<daqName>BPM12</daqName>\n"
                                    "<DBKey>4711</DBKey>\n"
                                    "<setPoint>1</setPoint>\n"
                                    "<sbName>BPM_SB</sbName>\n"
                                    "<subSystem>DIAGNOSTICS</subSystem>\n"
                                    "<description>position of the beam</description>\n"
                                    "<units>mm</units>\n"
                                    "<firstIndex>0</firstIndex>\n"
                                    "<lastIndex>3</lastIndex>\n"
                                    "<bitTitle bit=\"3\">ready to measure</bitTitle>\n"
                                    "<bitTitle bit=\"-1\">hardware fault</bitTitle>\n"
                                    "<dimension id=\"0\">\n"
                                    "<name>time</name>\n"
                                    "<description>time in the pulse</description>\n"
                                    "<units>us</units>\n"
                                    "</dimension>\n"
                                    "<dimension id=\"1\">\n"
                                    "<name>bunch</name>\n"
                                    "<description>bunch number</description>\n"
                                    "<units>1</units>\n"
                                    "</dimension>\n"
                                    "<freq>-1</freq>\n"
                                    "</DaqFloatMatrix>\n"));
}

TEST(ChanDescrWriter, WritesAnEmptyListAsAnEmptyRoot) {
    channel_list list;
    EXPECT_EQ(xml_of(list, chandescriptions),
              xml_declaration + "<CHANDESCRIPTIONS>\n</CHANDESCRIPTIONS>\n\n");
    EXPECT_EQ(xml_of(list, daqvariables), xml_declaration + "<DAQvariables>\n</DAQvariables>\n\n");
}

TEST(ChanDescrWriter, NamesAChannelWithoutDaqNameUndefined) {
    channel_list list;
    list.add(make_channel("P"));
    for (int format : {chandescriptions, daqvariables})
        EXPECT_EQ(xml_of(list, format), bare_document(format, {"P"})) << "format " << format;
}

TEST(ChanDescrWriter, KeepsTheOrderOfTheList) {
    channel_list list;
    for (const char *prop : {"C", "A", "B"})
        list.add(make_channel(prop));
    for (int format : {chandescriptions, daqvariables})
        EXPECT_EQ(xml_of(list, format), bare_document(format, {"C", "A", "B"})) << "format " << format;
}

TEST(ChanDescrWriter, WritesOnlyTheFirstOfSeveralRecordsOfOneProperty) {
    channel_list list;
    for (const char *prop : {"A", "B", "A", "a", "A/", "B", "A"})
        list.add(make_channel(prop));
    for (size_t i : {2u, 5u, 6u}) { // what stands in the later ones must not show
        set_text(list.records[i]->daq_name, "later");
        list.records[i]->stream = 99;
        list.records[i]->max_size = 99;
    }
    for (int format : {chandescriptions, daqvariables})
        EXPECT_EQ(xml_of(list, format), bare_document(format, {"A", "B", "a", "A/"})) << "format " << format;
}

TEST(ChanDescrWriter, TakesAnEmptyPropertyNameForAnIdentityToo) {
    channel_list list;
    for (const char *prop : {"", "A", ""})
        list.add(make_channel(prop));
    for (int format : {chandescriptions, daqvariables})
        EXPECT_EQ(xml_of(list, format), bare_document(format, {"", "A"})) << "format " << format;
}

TEST(ChanDescrWriter, ComparesPropertyNamesToTheirLastByte) {
    const std::string start(254, 'p');
    channel_list list;
    for (const char *end : {"1", "2", "1"})
        list.add(make_channel((start + end).c_str()));
    EXPECT_EQ(xml_of(list, chandescriptions), bare_document(chandescriptions, {start + "1", start + "2"}));
}

TEST(ChanDescrWriter, ComparesPropertyNamesOfEveryLengthWhateverStandsBesideThem) {
    for (size_t length = 1; length <= 25; ++length) {
        const std::string start(length - 1, 'p');
        channel_list list;
        for (const char *end : {"1", "2", "1"})
            list.add(make_channel((start + end).c_str()));
        list.records[2]->db_key = 0x01020304; // before the name in the record, and not written
        EXPECT_EQ(xml_of(list, chandescriptions),
                  bare_document(chandescriptions, {start + "1", start + "2"}));
    }
}

TEST(ChanDescrWriter, WritesARecordThatStandsTwiceOnce) {
    channel_list list;
    list.add(list.add(make_channel("P")));
    for (int format : {chandescriptions, daqvariables})
        EXPECT_EQ(xml_of(list, format), bare_document(format, {"P"})) << "format " << format;
}

namespace {

struct number_case {
    std::int32_t value;
    const char *text;
};
const number_case number_cases[] = {
    {0, "0"},
    {1, "1"},
    {-1, "-1"},
    {INT32_MAX, "2147483647"},
    {INT32_MIN, "-2147483648"},
    {-2147483136, "-2147483136"},
};

} // namespace

TEST(ChanDescrWriter, WritesEveryIntegerSignedTheMasksToo) {
    for (const number_case &c : number_cases) {
        const std::string n = c.text;
        channel_list list;
        chan_descr_2010 *channel = list.add(make_channel("P", "N"));
        channel->stream = channel->count = channel->db_key = channel->set_point = c.value;
        channel->ev_type = channel->dtype = static_cast<std::uint32_t>(c.value);
        channel->max_size = c.value;
        add_bit(channel, c.value);
        add_stat(add_dim(channel, c.value), c.value);
        EXPECT_EQ(
            xml_of(list, chandescriptions),
            chandescriptions_document(
                "<CHANNEL>\n<STREAM>" + n + "</STREAM>\n<EVTYPE>" + n + "</EVTYPE>\n<DTYPE>" + n +
                "</DTYPE>\n<DB_KEY>" + n + "</DB_KEY>\n<COUNT>" + n +
                "</COUNT>\n<SB_NAME></SB_NAME>\n<PROP>P</PROP>\n<NAME>N</NAME>\n<SETPOINT>" + n +
                "</SETPOINT>\n<SUBSYSTEM></SUBSYSTEM>\n<UNITS></UNITS>\n<DESC></DESC>\n<SIZE>" + n +
                "</SIZE>\n<BIT>" + n + "\n<BIT_NAME></BIT_NAME>\n<BIT_DESCR></BIT_DESCR>\n</BIT>\n<DIM>" + n +
                "\n<DIM_NAME></DIM_NAME>\n<DIM_UNITS></DIM_UNITS>\n<DIM_DESCR></DIM_DESCR>\n<STAT>" + n +
                "\n<STAT_NAME></STAT_NAME>\n<STAT_UNITS></STAT_UNITS>\n<STAT_DESCR></STAT_DESCR>\n"
                "</STAT>\n</DIM>\n</CHANNEL>\n"));
    }
}

TEST(ChanDescrWriter, WritesEveryIntegerOfTheOtherDialectSignedTheMaskToo) {
    for (const number_case &c : number_cases) {
        const std::string n = c.text;
        channel_list list;
        chan_descr_2010 *channel = list.add(make_channel("P", "N"));
        channel->db_key = channel->set_point = c.value;
        channel->ev_type = static_cast<std::uint32_t>(c.value);
        channel->max_size = 0;
        add_bit(channel, c.value);
        add_dim(channel, c.value);
        EXPECT_EQ(xml_of(list, daqvariables),
                  daqvariables_document("<DaqFloatMatrix>\n<evType>" + n +
                                        "</evType>\n<orvin>P</orvin>\n<daqName>N</daqName>\n<DBKey>" + n +
                                        "</DBKey>\n<setPoint>" + n +
                                        "</setPoint>\n<sbName></sbName>\n<subSystem></subSystem>\n"
                                        "<description></description>\n<units></units>\n<bitTitle bit=\"" +
                                        n + "\"></bitTitle>\n<dimension id=\"" + n +
                                        "\">\n<name></name>\n<description></description>\n<units></units>\n"
                                        "</dimension>\n<freq>1</freq>\n</DaqFloatMatrix>\n"));
    }
}

namespace {

struct element_case {
    std::int32_t max_size;
    int bits;
    const char *element;
    const char *indices;
};
const element_case element_cases[] = {
    {1, 0, "DaqFloat", ""},
    {1, 1, "DaqBits", ""},
    {1, 2, "DaqBits", ""},
    {2, 0, "DaqFloatMatrix", "<firstIndex>0</firstIndex>\n<lastIndex>1</lastIndex>\n"},
    {4, 2, "DaqFloatMatrix", "<firstIndex>0</firstIndex>\n<lastIndex>3</lastIndex>\n"},
    {0, 0, "DaqFloatMatrix", ""},
    {0, 1, "DaqFloatMatrix", ""},
    {-1, 0, "DaqFloatMatrix", ""},
    {INT32_MIN, 0, "DaqFloatMatrix", ""},
    {INT32_MAX, 0, "DaqFloatMatrix", "<firstIndex>0</firstIndex>\n<lastIndex>2147483646</lastIndex>\n"},
};

} // namespace

TEST(ChanDescrWriter, ChoosesTheElementBySizeAndBits) {
    for (const element_case &c : element_cases) {
        channel_list list;
        chan_descr_2010 *channel = list.add(make_channel("P", "N"));
        channel->max_size = c.max_size;
        std::string bit_lines;
        for (int bit = 0; bit < c.bits; ++bit) {
            add_bit(channel, bit, "name", "desc");
            bit_lines += "<bitTitle bit=\"" + std::to_string(bit) + "\">desc</bitTitle>\n";
        }
        EXPECT_EQ(
            xml_of(list, daqvariables),
            daqvariables_document(std::string("<") + c.element +
                                  ">\n<evType>0</evType>\n<orvin>P</orvin>\n<daqName>N</daqName>\n"
                                  "<DBKey>-1</DBKey>\n<setPoint>0</setPoint>\n<sbName></sbName>\n"
                                  "<subSystem></subSystem>\n<description></description>\n<units></units>\n" +
                                  c.indices + bit_lines + "<freq>1</freq>\n</" + c.element + ">\n"))
            << "max_size " << c.max_size << ", " << c.bits << " bits";
    }
}

TEST(ChanDescrWriter, GoesByTheVectorsNotByTheCounts) {
    channel_list list;
    chan_descr_2010 *claims = list.add(make_channel("claims", "N"));
    claims->nbits = claims->ndims = 3;
    chan_descr_2010 *holds = list.add(make_channel("holds", "N"));
    add_bit(holds, 1, "b", "bd");
    dim_descr *dim = add_dim(holds, 2, "d", "dd", "u");
    add_stat(dim, 3, "s", "sd", "su");
    holds->nbits = holds->ndims = dim->nstats = 0;
    const std::string channel_xml = xml_of(list, chandescriptions), variable_xml = xml_of(list, daqvariables);
    holds->nbits = holds->ndims = dim->nstats = 1; // so that they are released
    EXPECT_EQ(
        channel_xml,
        chandescriptions_document(
            "<CHANNEL>\n<STREAM>0</STREAM>\n<EVTYPE>0</EVTYPE>\n<DTYPE>0</DTYPE>\n<DB_KEY>-1</DB_KEY>\n"
            "<COUNT>0</COUNT>\n<SB_NAME></SB_NAME>\n<PROP>claims</PROP>\n<NAME>N</NAME>\n"
            "<SETPOINT>0</SETPOINT>\n<SUBSYSTEM></SUBSYSTEM>\n<UNITS></UNITS>\n<DESC></DESC>\n"
            "<SIZE>1</SIZE>\n</CHANNEL>\n"
            "<CHANNEL>\n<STREAM>0</STREAM>\n<EVTYPE>0</EVTYPE>\n<DTYPE>0</DTYPE>\n<DB_KEY>-1</DB_KEY>\n"
            "<COUNT>0</COUNT>\n<SB_NAME></SB_NAME>\n<PROP>holds</PROP>\n<NAME>N</NAME>\n"
            "<SETPOINT>0</SETPOINT>\n<SUBSYSTEM></SUBSYSTEM>\n<UNITS></UNITS>\n<DESC></DESC>\n"
            "<SIZE>1</SIZE>\n<BIT>1\n<BIT_NAME>b</BIT_NAME>\n<BIT_DESCR>bd</BIT_DESCR>\n</BIT>\n<DIM>2\n"
            "<DIM_NAME>d</DIM_NAME>\n<DIM_UNITS>u</DIM_UNITS>\n<DIM_DESCR>dd</DIM_DESCR>\n<STAT>3\n"
            "<STAT_NAME>s</STAT_NAME>\n<STAT_UNITS>su</STAT_UNITS>\n<STAT_DESCR>sd</STAT_DESCR>\n</STAT>\n"
            "</DIM>\n</CHANNEL>\n"));
    EXPECT_EQ(variable_xml,
              daqvariables_document(
                  "<DaqFloat>\n<evType>0</evType>\n<orvin>claims</orvin>\n<daqName>N</daqName>\n"
                  "<DBKey>-1</DBKey>\n<setPoint>0</setPoint>\n<sbName></sbName>\n<subSystem></subSystem>\n"
                  "<description></description>\n<units></units>\n<freq>1</freq>\n</DaqFloat>\n"
                  "<DaqBits>\n<evType>0</evType>\n<orvin>holds</orvin>\n<daqName>N</daqName>\n"
                  "<DBKey>-1</DBKey>\n<setPoint>0</setPoint>\n<sbName></sbName>\n<subSystem></subSystem>\n"
                  "<description></description>\n<units></units>\n<bitTitle bit=\"1\">bd</bitTitle>\n"
                  "<dimension id=\"2\">\n<name>d</name>\n<description>dd</description>\n<units>u</units>\n"
                  "</dimension>\n<freq>1</freq>\n</DaqBits>\n"));
}

namespace {

struct freq_case {
    int first, last; // values of ev_type
    const char *freq;
};
const freq_case freq_cases[] = {
    {0, 5, "1"},    // global
    {6, 19, "-1"},  // local
    {20, 20, "-1"}, // ML
    {21, 26, "-1"}, // local
    {27, 27, "-1"}, // ML
    {28, 31, "1"},  // undefined
    {32, 66, "1"},  // unknown
    {INT32_MIN, INT32_MIN + 1, "1"},
    {-1, -1, "1"},
};

} // namespace

// The class is asked for with ev_type as it stands, though it is a mask: consumers know these values of freq.
TEST(ChanDescrWriter, WritesTheFrequencyByTheStructureClassOfTheEventType) {
    for (const freq_case &c : freq_cases)
        for (int ev_type = c.first; ev_type <= c.last; ++ev_type) {
            channel_list list;
            list.add(make_channel("P", "N"))->ev_type = static_cast<std::uint32_t>(ev_type);
            EXPECT_EQ(xml_of(list, daqvariables),
                      daqvariables_document("<DaqFloat>\n<evType>" + std::to_string(ev_type) +
                                            "</evType>\n<orvin>P</orvin>\n<daqName>N</daqName>\n"
                                            "<DBKey>-1</DBKey>\n<setPoint>0</setPoint>\n<sbName></sbName>\n"
                                            "<subSystem></subSystem>\n<description></description>\n"
                                            "<units></units>\n<freq>" +
                                            c.freq + "</freq>\n</DaqFloat>\n"));
        }
}

namespace {

/// A channel that has `text`, cut at its field, in every text field, and the lines that must come of it.
chan_descr_2010 *channel_of(const std::string &text) {
    chan_descr_2010 *channel = make_channel(text.c_str(), text.c_str());
    for (char *field : {channel->prop_desc, channel->sb_name})
        snprintf(field, 256, "%s", text.c_str());
    set_text(channel->units, text);
    set_text(channel->subsystem, text);
    add_bit(channel, 0, text.c_str(), text.c_str());
    add_stat(add_dim(channel, 0, text.c_str(), text.c_str(), text.c_str()), 0, text.c_str(), text.c_str(),
             text.c_str());
    return channel;
}

std::string channel_lines_of(const std::string &text) {
    const std::string t255 = text.substr(0, 255), t79 = text.substr(0, 79), t63 = text.substr(0, 63),
                      t15 = text.substr(0, 15);
    return "<CHANNEL>\n<STREAM>0</STREAM>\n<EVTYPE>0</EVTYPE>\n<DTYPE>0</DTYPE>\n<DB_KEY>-1</DB_KEY>\n"
           "<COUNT>0</COUNT>\n<SB_NAME>" +
           t255 + "</SB_NAME>\n<PROP>" + t255 + "</PROP>\n<NAME>" + t255 +
           "</NAME>\n<SETPOINT>0</SETPOINT>\n<SUBSYSTEM>" + t63 + "</SUBSYSTEM>\n<UNITS>" + t15 +
           "</UNITS>\n<DESC>" + t255 + "</DESC>\n<SIZE>1</SIZE>\n<BIT>0\n<BIT_NAME>" + t63 +
           "</BIT_NAME>\n<BIT_DESCR>" + t79 + "</BIT_DESCR>\n</BIT>\n<DIM>0\n<DIM_NAME>" + t63 +
           "</DIM_NAME>\n<DIM_UNITS>" + t15 + "</DIM_UNITS>\n<DIM_DESCR>" + t79 +
           "</DIM_DESCR>\n<STAT>0\n<STAT_NAME>" + t63 + "</STAT_NAME>\n<STAT_UNITS>" + t15 +
           "</STAT_UNITS>\n<STAT_DESCR>" + t79 + "</STAT_DESCR>\n</STAT>\n</DIM>\n</CHANNEL>\n";
}

std::string variable_lines_of(const std::string &text) {
    const std::string t255 = text.substr(0, 255), t79 = text.substr(0, 79), t63 = text.substr(0, 63),
                      t15 = text.substr(0, 15);
    return "<DaqBits>\n<evType>0</evType>\n<orvin>" + t255 + "</orvin>\n<daqName>" + t255 +
           "</daqName>\n<DBKey>-1</DBKey>\n<setPoint>0</setPoint>\n<sbName>" + t255 +
           "</sbName>\n<subSystem>" + t63 + "</subSystem>\n<description>" + t255 + "</description>\n<units>" +
           t15 + "</units>\n<bitTitle bit=\"0\">" + t79 + "</bitTitle>\n<dimension id=\"0\">\n<name>" + t63 +
           "</name>\n<description>" + t79 + "</description>\n<units>" + t15 +
           "</units>\n</dimension>\n<freq>1</freq>\n</DaqBits>\n";
}

const std::string stored_texts[] = {
    "a & b < c > d",
    "&amp;",
    "</PROP>",
    "\"quoted\" and 'quoted'",
    "]]>",
    "%s%n%d",
    " blanks around ",
    "two\nlines\tand a tab\r",
    "\xe4\xf6\xfc \xc3\xa4 \x01\x7f\xff",
    std::string(255, 'x'), // as long as the longest field
};

} // namespace

TEST(ChanDescrWriter, WritesTextAsItIsStoredWithoutEscaping) {
    for (const std::string &text : stored_texts) {
        channel_list list;
        list.add(channel_of(text));
        EXPECT_EQ(xml_of(list, chandescriptions), chandescriptions_document(channel_lines_of(text)));
        EXPECT_EQ(xml_of(list, daqvariables), daqvariables_document(variable_lines_of(text)));
    }
}

TEST(ChanDescrWriter, WritesLongDocumentsWhole) {
    channel_list list;
    std::string channel_lines, variable_lines;
    for (int i = 0; i < 3000; ++i) {
        const std::string text = std::to_string(i) + std::string(250, 'y');
        list.add(channel_of(text));
        channel_lines += channel_lines_of(text);
        variable_lines += variable_lines_of(text);
    }
    EXPECT_TRUE(xml_of(list, chandescriptions) == chandescriptions_document(channel_lines));
    EXPECT_TRUE(xml_of(list, daqvariables) == daqvariables_document(variable_lines));
}

TEST(ChanDescrWriter, LeavesTheRecordsAsTheyWere) {
    channel_list list;
    list.add(full_channel());
    list.add(make_channel("P"));
    const std::string before = describe(list.records);
    for (int format : {chandescriptions, daqvariables})
        xml_of(list, format);
    EXPECT_EQ(describe(list.records), before);
}

TEST(ChanDescrWriter, PassesOverNullParts) {
    channel_list list;
    chan_descr_2010 *const channel = list.add(full_channel());
    add_bit(channel, 3, "READY", "is ready");
    add_stat(add_dim(channel, 1, "X", "axis", "mm"), 1, "MEAN", "mean", "mm");
    const auto table_of = [&] {
        const temporary_file file;
        EXPECT_EQ(dump(list, &file.path(), full_table, chandescriptions, -1, nullptr).result, 0);
        return file.text();
    };
    const std::string expected[] = {xml_of(list, chandescriptions), xml_of(list, daqvariables), table_of()};
    channel->bits.push_back(nullptr);
    channel->dims.back()->stats.push_back(nullptr);
    channel->dims.insert(channel->dims.begin(), nullptr);
    EXPECT_EQ(xml_of(list, chandescriptions), expected[0]);
    EXPECT_EQ(xml_of(list, daqvariables), expected[1]);
    EXPECT_EQ(table_of(), expected[2]);
}
