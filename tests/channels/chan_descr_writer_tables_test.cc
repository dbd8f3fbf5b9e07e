/// The two text tables of the channel description writer: the full table and the summary table.

#include <climits>
#include <cstdint>

#include "support/chan_descr_writing.h"

namespace {

/// The table that a list gives, and what the call sent to standard output.
struct table {
    std::string text;
    std::string out;
};

table table_of(std::vector<chan_descr_2010 *> *list, int mode, int format = chandescriptions,
               std::vector<dim_params *> *dims = nullptr) {
    const temporary_file file("an old and rather long line that must not shine through\n", ".txt");
    const dump_outcome seen = dump(list, &file.path(), mode, format, -1, nullptr, dims);
    EXPECT_EQ(seen.result, 0);
    EXPECT_EQ(seen.streams.err, "");
    return {file.text(), seen.streams.out};
}

std::string full_table_of(std::vector<chan_descr_2010 *> *list) {
    const table written = table_of(list, full_table);
    EXPECT_EQ(written.out, "");
    return written.text;
}

/// Two channels, the first with all kinds of sub-records.
struct sample_list : channel_list {
    sample_list() {
        add(full_channel());
        add(make_channel("ORVIN.DIAG/BPM/13/CH00.TD"));
    }
};

const char *const sample_full_table =
    "7\t18\tBPM12\tORVIN.DIAG/BPM/12/CH00.TD\t1\t\"position of the beam\"\t\"mm\"\t4\t2\t2\n"
    "3\tREADY\t\"ready to measure\"\n"
    "-1\tFAULT\t\"hardware fault\"\n"
    "0\ttime\t\"us\"\t\"time in the pulse\"\n"
    "2\n"
    "5\tmean\t\"mm\"\t\"mean of the pulse\"\n"
    "6\trms\t\"um\"\t\"spread in the pulse\"\n"
    "1\tbunch\t\"1\"\t\"bunch number\"\n"
    "0\n"
    "0\t0\t!!!UNDEFINED!!!\tORVIN.DIAG/BPM/13/CH00.TD\t0\t\"\"\t\"\"\t1\t0\t0\n";

const char *const sample_summary_table = "                                             BPM12\t4\tBLOCK_BPM\n"
                                         "                                   !!!UNDEFINED!!!\t1\tUNKNOWN\n";

} // namespace

TEST(ChanDescrWriterFullTable, HasALinePerChannelBitDimensionAndStatistic) {
    sample_list list;
    EXPECT_EQ(full_table_of(list), sample_full_table);
}

TEST(ChanDescrWriterFullTable, ShowsTheStoredCountsAndTheRecordsOfTheVectors) {
    channel_list list;
    chan_descr_2010 *claims = list.add(make_channel("claims", "N"));
    claims->nbits = 5;
    claims->ndims = -6;
    chan_descr_2010 *holds = list.add(make_channel("holds", "N"));
    add_bit(holds, 1, "b", "bd");
    dim_descr *dim = add_dim(holds, 2, "d", "dd", "u");
    add_stat(dim, 3, "s", "sd", "su");
    dim_descr *claiming_dim = add_dim(holds, 4, "e", "ed", "v");
    claiming_dim->nstats = 9;
    holds->nbits = holds->ndims = dim->nstats = 0;
    const std::string text = full_table_of(list);
    holds->nbits = dim->nstats = 1; // so that they are released
    holds->ndims = 2;
    EXPECT_EQ(text, "0\t0\tN\tclaims\t0\t\"\"\t\"\"\t1\t5\t-6\n"
                    "0\t0\tN\tholds\t0\t\"\"\t\"\"\t1\t0\t0\n"
                    "1\tb\t\"bd\"\n"
                    "2\td\t\"u\"\t\"dd\"\n"
                    "0\n"
                    "3\ts\t\"su\"\t\"sd\"\n"
                    "4\te\t\"v\"\t\"ed\"\n"
                    "9\n");
}

TEST(ChanDescrWriterFullTable, WritesEveryIntegerSignedTheMaskToo) {
    const std::pair<std::int32_t, const char *> cases[] = {
        {0, "0"}, {1, "1"}, {-1, "-1"}, {INT32_MAX, "2147483647"}, {INT32_MIN, "-2147483648"}};
    for (const auto &[value, text] : cases) {
        const std::string n = text;
        channel_list list;
        chan_descr_2010 *channel = list.add(make_channel("P", "N"));
        channel->stream = channel->set_point = channel->max_size = value;
        channel->ev_type = static_cast<std::uint32_t>(value);
        add_bit(channel, value);
        add_stat(add_dim(channel, value), value);
        EXPECT_EQ(full_table_of(list), n + "\t" + n + "\tN\tP\t" + n + "\t\"\"\t\"\"\t" + n + "\t1\t1\n" + n +
                                           "\t\t\"\"\n" + n + "\t\t\"\"\t\"\"\n1\n" + n + "\t\t\"\"\t\"\"\n");
    }
}

TEST(ChanDescrWriterFullTable, WritesTextAsItIsStored) {
    for (const std::string &text :
         {std::string("a \"b\" & <c>"), std::string("tab\tand\nline"), std::string("%s%d%n"),
          std::string("\xe4\x01\xff"), std::string(255, 'x')}) {
        channel_list list;
        chan_descr_2010 *channel = list.add(make_channel(text.c_str(), text.c_str()));
        set_text(channel->prop_desc, text);
        set_text(channel->units, text);
        add_bit(channel, 0, text.c_str(), text.c_str());
        add_stat(add_dim(channel, 0, text.c_str(), text.c_str(), text.c_str()), 0, text.c_str(), text.c_str(),
                 text.c_str());
        const std::string t15 = text.substr(0, 15), t63 = text.substr(0, 63), t79 = text.substr(0, 79);
        EXPECT_EQ(full_table_of(list), "0\t0\t" + text + "\t" + text + "\t0\t\"" + text + "\"\t\"" + t15 +
                                           "\"\t1\t1\t1\n0\t" + t63 + "\t\"" + t79 + "\"\n0\t" + t63 +
                                           "\t\"" + t15 + "\"\t\"" + t79 + "\"\n1\n0\t" + t63 + "\t\"" + t15 +
                                           "\"\t\"" + t79 + "\"\n");
    }
}

TEST(ChanDescrWriterFullTable, ListsOnlyTheFirstOfSeveralRecordsOfOneProperty) {
    channel_list list;
    list.add(make_channel("A", "first"));
    list.add(make_channel("B", "second"));
    add_bit(list.add(make_channel("A", "later")), 1, "later", "later");
    list.add(make_channel("a", "third"));
    EXPECT_EQ(full_table_of(list), "0\t0\tfirst\tA\t0\t\"\"\t\"\"\t1\t0\t0\n"
                                   "0\t0\tsecond\tB\t0\t\"\"\t\"\"\t1\t0\t0\n"
                                   "0\t0\tthird\ta\t0\t\"\"\t\"\"\t1\t0\t0\n");
}

TEST(ChanDescrWriterSummaryTable, HasALinePerChannel) {
    sample_list list;
    EXPECT_EQ(table_of(list, summary_table).text, sample_summary_table);
}

TEST(ChanDescrWriterSummaryTable, AlignsNamesToTheRightAndNeverCutsThem) {
    const std::pair<size_t, size_t> cases[] = {
        {1, 49}, {49, 1}, {50, 0}, {51, 0}, {255, 0}}; // length, blanks
    for (const auto &[length, blanks] : cases) {
        const std::string name(length, 'n');
        channel_list list;
        list.add(make_channel("P", name.c_str()));
        EXPECT_EQ(table_of(list, summary_table).text, std::string(blanks, ' ') + name + "\t1\tUNKNOWN\n");
    }
}

TEST(ChanDescrWriterSummaryTable, ShowsTheSizeSigned) {
    for (std::int32_t size : {0, 1, -1, 4096, INT32_MAX, INT32_MIN}) {
        channel_list list;
        list.add(make_channel("P", std::string(50, 'n').c_str()))->max_size = size;
        EXPECT_EQ(table_of(list, summary_table).text,
                  std::string(50, 'n') + "\t" + std::to_string(size) + "\tUNKNOWN\n");
    }
}

namespace {

struct dtype_case {
    std::uint32_t dtype;
    const char *name;
};
const dtype_case dtype_cases[] = {
    {0x1, "0"},
    {0x2, "UPD_BLOCK"},
    {0x4, "ENV_DICT_BLOCK"},
    {0xc, "ENV_DICT_BLOCK"},
    {0x40, "BLOCK_BPM"},
    {0x200, "BLOCK_SINGLE"},
    {0x10000000, "BLOCK_GENERIC_SPECT"},
    {0x20000000, "29"},
    {0x40000000, "30"},
    // The bit that selects the 2010 block types does not select them here.
    {0x80000200, "BLOCK_SINGLE"},
    {0x80000000, "UPD_BLOCK_DONT_USE_31"},
    {0xc0000000, "30"},
    {0xffffffff, "0"},
    {0xfffffffe, "UPD_BLOCK"},
};

} // namespace

// Whoever reads the process's standard output sees one empty line per block name that was looked up.
TEST(ChanDescrWriterSummaryTable, NamesTheLowestBitOfTheDataTypeAndPrintsAnEmptyLine) {
    for (const dtype_case &c : dtype_cases) {
        channel_list list;
        list.add(make_channel("P", std::string(50, 'n').c_str()))->dtype = c.dtype;
        const table written = table_of(list, summary_table);
        EXPECT_EQ(written.text, std::string(50, 'n') + "\t1\t" + c.name + "\n") << std::hex << c.dtype;
        EXPECT_EQ(written.out, "\n") << std::hex << c.dtype;
    }
}

TEST(ChanDescrWriterSummaryTable, CallsADataTypeOfNoBitUnknownWithoutAnEmptyLine) {
    channel_list list;
    list.add(make_channel("P", "N"))->dtype = 0;
    const table written = table_of(list, summary_table);
    EXPECT_EQ(written.text, std::string(49, ' ') + "N\t1\tUNKNOWN\n");
    EXPECT_EQ(written.out, "");
}

TEST(ChanDescrWriterSummaryTable, ListsOnlyTheFirstOfSeveralRecordsOfOneProperty) {
    channel_list list;
    const std::string name(50, 'n');
    for (std::uint32_t dtype : {2u, 0u, 4u}) { // one empty line, not two or three
        chan_descr_2010 *channel = list.add(make_channel("A", name.c_str()));
        channel->dtype = dtype;
    }
    list.add(make_channel("B", name.c_str()))->dtype = 8;
    const table written = table_of(list, summary_table);
    EXPECT_EQ(written.text, name + "\t1\tUPD_BLOCK\n" + name + "\t1\tENV_BLOCK\n");
    EXPECT_EQ(written.out, "\n\n");
}

TEST(ChanDescrWriterTables, DoNotDependOnFormatOrAxes) {
    sample_list list;
    std::string name = "BPM12";
    zeb5_spect_header_2010 axes[2] = {};
    zeb5_image_ext_frame_head heads[2] = {};
    dim_params params{name.data(), 2, axes, heads};
    std::vector<dim_params *> dims{&params};
    for (int format : {chandescriptions, daqvariables})
        for (std::vector<dim_params *> *given : {static_cast<std::vector<dim_params *> *>(nullptr), &dims}) {
            EXPECT_EQ(table_of(list, full_table, format, given).text, sample_full_table);
            EXPECT_EQ(table_of(list, summary_table, format, given).text, sample_summary_table);
        }
}

// What is not used is not looked at either: such an entry cannot be.
TEST(ChanDescrWriterTables, AndTheOtherDialectDoNotLookAtAxes) {
    sample_list list;
    std::vector<dim_params *> dims{nullptr};
    EXPECT_EQ(table_of(list, full_table, chandescriptions, &dims).text, sample_full_table);
    EXPECT_EQ(table_of(list, summary_table, chandescriptions, &dims).text, sample_summary_table);
    std::string with, without;
    EXPECT_EQ(dump_chan_desr(list, nullptr, xml_document, daqvariables, -1, &with, &dims), 0);
    EXPECT_EQ(dump_chan_desr(list, nullptr, xml_document, daqvariables, -1, &without, nullptr), 0);
    EXPECT_EQ(with, without);
}

TEST(ChanDescrWriterTables, GrowToAnyLength) {
    channel_list list;
    std::string full, summary;
    for (int i = 0; i < 3000; ++i) {
        const std::string n = std::to_string(i), name = n + std::string(100, 'n');
        list.add(make_channel(n.c_str(), name.c_str()));
        full += "0\t0\t" + name + "\t" + n + "\t0\t\"\"\t\"\"\t1\t0\t0\n";
        summary += name + "\t1\tUNKNOWN\n";
    }
    EXPECT_TRUE(full_table_of(list) == full);
    EXPECT_TRUE(table_of(list, summary_table).text == summary);
}
