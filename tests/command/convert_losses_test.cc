/// `zeb5xml convert` reads back what it wrote, names what was lost, and then leaves the old file as it was.

#include <csignal>
#include <filesystem>

#include <gtest/gtest.h>

#include "support/command_runner.h"

namespace {

std::string channel(const std::string &elements) {
    return "<CHANDESCRIPTIONS><CHANNEL>" + elements + "<NAME>N</NAME></CHANNEL></CHANDESCRIPTIONS>";
}

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

/// A document, its form, and what is said before the refusal.
struct loss_case {
    const char *form;
    std::string document;
    std::string losses;
};
const loss_case loss_cases[] = {
    // The reader keeps the last piece
    {"chandescriptions", channel("<PROP>HALL&lt;2&gt;/CURRENT</PROP>"),
     "zeb5xml: in.xml: line 1: the text of PROP comes in 3 pieces (entity or character reference): a reader "
     "keeps "
     "only one of them\n"},
    // ISO-8859-1 has no omega
    {"chandescriptions", channel("<PROP>A</PROP><UNITS>\xce\xa9</UNITS>"),
     "zeb5xml: in.xml: A: units: \"\xce\xa9\" becomes \"\xc3\x8e\xc2\xa9\"\n"},
    {"daqvariables", channel("<PROP>\xce\xa9</PROP>"),
     "zeb5xml: in.xml: \xce\xa9: prop_name: \"\xce\xa9\" becomes \"\xc3\x8e\xc2\xa9\"\n"},
    {"chandescriptions", channel("<PROP>A</PROP><DESC>&amp;</DESC><BIT>1<BIT_NAME>&lt;</BIT_NAME></BIT>"),
     "zeb5xml: in.xml: A: prop_desc: \"&\" makes the document ill-formed, as it is written without escaping\n"
     "zeb5xml: in.xml: A: bits.bit_name: \"<\" makes the document ill-formed, as it is written without "
     "escaping\n"},
    {"chandescriptions", channel("<PROP>A</PROP><UNITS>0123456789abcdef</UNITS>"),
     "zeb5xml: in.xml: the text of UNITS is 16 bytes long, cut at 15: '0123456789abcdef...'\n"},
    {"daqvariables", channel("<PROP>A</PROP><BIT>1<BIT_NAME>on</BIT_NAME></BIT>"),
     "zeb5xml: in.xml: daqvariables changes bits in 1 channel, such as A: bits[1].bit_name: \"on\" becomes "
     "\"\"\n"},
    {"envindexdict",
     "<ENVINDEXDICT><CHANNEL><INDEX>1</INDEX><PROP>P</PROP><DABS>1e-7</DABS></CHANNEL></ENVINDEXDICT>",
     "zeb5xml: in.xml: index 1: env_ch_abs_delta: 1e-07 becomes 0\n"},
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
        EXPECT_EQ(convert(row.document, {"--to", row.form, "--force"}), (command_result{0, "", row.losses}));
        EXPECT_TRUE(folder.text("out.xml").starts_with("<?xml")) << folder.text("out.xml");
    }
}

// The micro sign once doubled at each pass
TEST_F(ConvertLosses, AreNoneWhereTheEncodingOfTheDocumentHasTheCharacter) {
    EXPECT_EQ(convert(channel("<PROP>A</PROP><UNITS>\xc2\xb5V</UNITS>"), {"--to", "chandescriptions"}),
              (command_result{0, "", ""}));
    const std::string once = folder.text("out.xml");
    EXPECT_NE(once.find("<UNITS>\xb5V</UNITS>"), std::string::npos) << once;
    EXPECT_EQ(convert(once, {"--to", "chandescriptions"}), (command_result{0, "", ""}));
    EXPECT_EQ(folder.text("out.xml"), once);
}

TEST_F(ConvertLosses, LeaveTheDocumentThatIsConvertedIntoItself) {
    const std::string document = channel("<PROP>A&amp;</PROP>");
    folder.write("in.xml", document);
    EXPECT_EQ(
        folder.run({"convert", "in.xml", "--to", "chandescriptions", "-o", "in.xml"}),
        (command_result{1, "",
                        "zeb5xml: in.xml: line 1: the text of PROP comes in 2 pieces (entity or character "
                        "reference): a reader keeps only one of them\n"
                        "zeb5xml: in.xml: &: prop_name: \"&\" makes the document ill-formed, as it is "
                        "written without escaping\n" +
                            std::string(refusal)}));
    EXPECT_EQ(folder.text("in.xml"), document);
}

TEST_F(ConvertLosses, OfRecordsAreNamed) {
    EXPECT_EQ(
        convert("<CHANDESCRIPTIONS><CHANNEL><PROP>A</PROP><NAME>N</NAME></CHANNEL>"
                "<CHANNEL><PROP>A</PROP><NAME>M</NAME></CHANNEL></CHANDESCRIPTIONS>",
                {"--to", "chandescriptions", "--keep-duplicates"}),
        (command_result{1, "", "zeb5xml: in.xml: A (2): the record is left out\n" + std::string(refusal)}));
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
            "zeb5xml: in.xml: daqvariables changes stream in 2 channels, such as A: stream: 1 becomes 0\n"
            "zeb5xml: in.xml: daqvariables changes dtype in 1 channel, such as A: dtype: 0x9 (0:ENV_BLOCK) "
            "becomes "
            "0x0\n"
            "zeb5xml: in.xml: daqvariables changes count in 1 channel, such as A: count: 3 becomes 0\n"
            "zeb5xml: in.xml: daqvariables changes db_key in 1 channel, such as A: db_key: 2 becomes -1\n"
            "zeb5xml: in.xml: daqvariables changes sb_name in 1 channel, such as A: sb_name: \"S\" becomes "
            "\"\"\n"
            "zeb5xml: in.xml: daqvariables changes dims.stats in 1 channel, such as A: dims[0].stats[1]: "
            "{\"stat\":1,\"stat_name\":\"\",\"stat_desc\":\"\",\"units\":\"\"} becomes nothing\n"}));
    EXPECT_TRUE(folder.text("out.xml").ends_with("</DAQvariables>\n\n"));
}

TEST_F(ConvertLosses, AreNotLookedForInText) {
    EXPECT_EQ(convert(channel("<PROP>\xc2\xb5</PROP>"), {"--to", "table"}), (command_result{0, "", ""}));
    EXPECT_EQ(folder.text("out.xml"), "0\t0\tN\t\xc2\xb5\t0\t\"\"\t\"\"\t1\t0\t0\n");
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
