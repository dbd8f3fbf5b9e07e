/// What the two readers of channel descriptions, in both dialects, do with documents that they cannot read
/// whole.

#include "parse_chan_descr.h"

#include <gtest/gtest.h>

#include "support/channel_records.h"
#include "support/descr_readers.h"
#include "support/element.h"
#include "xml_platform.h"

namespace {

/// A result and what was written to standard error.
struct report {
    int result;
    std::string err;
};

void expect_report(reader_form form, const std::string &document, const report &expected, int records = 0) {
    channel_list list;
    list.add(make_channel("ORVIN/OLD"));
    const read_outcome seen = read_document(form, document, list);
    EXPECT_EQ(seen.result, expected.result) << reader_name(form) << ": " << excerpt(document);
    EXPECT_EQ(seen.err, expected.err) << reader_name(form) << ": " << excerpt(document);
    EXPECT_EQ(seen.out, "") << reader_name(form) << ": " << excerpt(document);
    EXPECT_EQ(list.records.size(), 1u + static_cast<size_t>(records)) << excerpt(document);
    EXPECT_STREQ(list.records[0]->prop_name, "ORVIN/OLD");
}

void expect_report(const std::string &document, const report &expected, int records = 0) {
    for (reader_form form : both_readers)
        expect_report(form, document, expected, records);
}

std::string fatal(const std::string &place, const std::string &message) {
    return "\nFatal Error at (file DOCUMENT, " + place + "): " + message + '\n';
}

std::string wrong_root(const std::string &tag) {
    return "WRONG root tag: '" + tag + "' must be 'CHANDESCRIPTIONS or DAQvariables'\n";
}

// Roots

TEST(ParseChanDescrErrors, RefuseAnyOtherRoot) {
    const char *const roots[] = {"chandescriptions",
                                 "CHANDESCRIPTION",
                                 "CHANDESCRIPTIONSS",
                                 "daqvariables",
                                 "DAQVariables",
                                 "CHANNEL",
                                 "BMR",
                                 "r"};
    for (const std::string root : roots) {
        const std::string body = "<CHANNEL><PROP>ORVIN/A</PROP></CHANNEL>";
        expect_report(element(root, body), {1, wrong_root(root)});
        expect_report('<' + root + "/>", {1, wrong_root(root)});
        expect_report("<?xml version=\"1.0\"?>\n<!-- c -->\n<" + root + "></" + root + '>',
                      {1, wrong_root(root)});
    }
}

// Nothing behind a wrong root is looked at, so what is ill-formed there is not found.
TEST(ParseChanDescrErrors, ReadNothingBehindAWrongRoot) {
    expect_report("<r><a></b></r>", {1, wrong_root("r")});
    expect_report("<r><CHANDESCRIPTIONS><CHANNEL><PROP>ORVIN/A</PROP></CHANNEL></CHANDESCRIPTIONS></r>",
                  {1, wrong_root("r")});
}

// Documents without a usable root: 1 for the status and 1 for the report

TEST(ParseChanDescrErrors, AddTheReportOfAFailedStartToTheStatus) {
    const std::string no_document =
        fatal("line 1, char 1", "invalid document structure") + "scanFirst() failed\n";
    for (const char *document : {"", "text", "]]>", "CHANDESCRIPTIONS"})
        expect_report(document, {2, no_document});
}

TEST(ParseChanDescrErrors, AddTheReportOfAFailedFirstStepToTheStatus) {
    expect_report("<CHANDESCRIPTIONS", {2, fatal("line 1, char 18", "unexpected end of input")});
    expect_report("<CHANDESCRIPTIONS a='1' a='2'/>",
                  {2, fatal("line 1, char 27", "attribute 'a' is already specified for element "
                                               "'CHANDESCRIPTIONS'")});
    expect_report("<CHANDESCRIPTIONS/>junk",
                  {2, fatal("line 1, char 20", "comment or processing instruction expected")});
}

TEST(ParseChanDescrErrors, CountAWarningAsAnError) {
    for (const char *root : {"CHANDESCRIPTIONS", "DAQvariables"})
        expect_report(
            "<?xml version=\"1.0\" encoding=\"UTF-16\"?><" + std::string(root) + "/>",
            {2, "\nWarning at (file DOCUMENT, line 1, char 40): encoding 'UTF-16' from XML declaration "
                "or manually set contradicts the auto-sensed encoding; ignoring\n"});
}

TEST(ParseChanDescrErrors, CountElementsThatTheDocumentTypeDoesNotDeclare) {
    expect_report("<!DOCTYPE CHANDESCRIPTIONS [<!ELEMENT x ANY>]><CHANDESCRIPTIONS/>",
                  {2, "\nError at (file DOCUMENT, line 1, char 64): no declaration found for element "
                      "'CHANDESCRIPTIONS'\n"});
}

TEST(ParseChanDescrErrors, OpenNoOtherDocument) {
    temporary_file entity("<CHANNEL><PROP>ORVIN/A</PROP></CHANNEL>");
    const std::string external = "<!DOCTYPE CHANDESCRIPTIONS [<!ELEMENT CHANDESCRIPTIONS ANY>"
                                 "<!ENTITY other SYSTEM \"" +
                                 entity.path() + "\">]>";
    for (reader_form form : both_readers) {
        channel_list list;
        const read_outcome seen =
            read_document(form, external + "<CHANDESCRIPTIONS>&other;</CHANDESCRIPTIONS>", list);
        EXPECT_EQ(seen.result, 1) << reader_name(form);
        EXPECT_NE(seen.err, "") << reader_name(form);
        EXPECT_TRUE(list.records.empty()) << reader_name(form);
    }
}

// Faults inside the root: the records before them stay, the status is that of a document that was read

TEST(ParseChanDescrErrors, KeepTheRecordsBeforeAFault) {
    const struct {
        const char *body; // inside of the root
        int records;
        const char *message; // with the column counted from the beginning of the body
        int column;
    } rows[] = {
        {"<CHANNEL></CHANEL>", 0, "expected end of tag 'CHANNEL'", 12},
        {"<CHANNEL><PROP>A</PROP></CHANEL>", 1, "expected end of tag 'CHANNEL'", 26},
        {"<CHANNEL><PROP>A</PROP></CHANNEL></CHANNEL>", 1, "expected end of tag 'CHANDESCRIPTIONS'", 36},
        {"<CHANNEL><PROP>A</PROP></CHANNEL><CHANNEL><STREAM>1</STREAM><PROP>B&nope;</PROP></CHANNEL>", 1,
         "entity 'nope' not found", 74},
        {"<CHANNEL><PROP>A</PROP></CHANNEL><CHANNEL><PROP>B</PROP><BIT>1</BIT><BIT>2<</CHANNEL>", 2,
         "element name expected", 76},
        {"<CHANNEL><PROP>A</PROP></CHANNEL><CHANNEL b=\"1\" b=\"2\">", 1,
         "attribute 'b' is already specified for element 'CHANNEL'", 51},
    };
    const std::string root = "CHANDESCRIPTIONS", start = '<' + root + '>';
    for (const auto &row : rows) {
        const int column = static_cast<int>(start.size()) + row.column;
        expect_report(start + row.body + "</" + root + '>',
                      {1, fatal("line 1, char " + std::to_string(column), row.message)}, row.records);
    }
}

TEST(ParseChanDescrErrors, KeepTheRecordsBeforeAFaultInTheOtherDialect) {
    expect_report(
        "<DAQvariables>\n<DaqFloat><orvin>A</orvin></DaqFloat>\n<DaqFloat><orvin>B</orvin></DaqFloats>\n"
        "</DAQvariables>",
        {1, fatal("line 3, char 37", "unterminated end tag 'DaqFloat'")}, 2);
}

TEST(ParseChanDescrErrors, CountOneFaultOnceAndLookNoFurther) {
    expect_report("<CHANDESCRIPTIONS><a></b><c></d></CHANDESCRIPTIONS>",
                  {1, fatal("line 1, char 24", "expected end of tag 'a'")});
}

TEST(ParseChanDescrErrors, ReportWhatFollowsTheRoot) {
    expect_report("<CHANDESCRIPTIONS><CHANNEL><PROP>A</PROP></CHANNEL></CHANDESCRIPTIONS><x/>",
                  {1, fatal("line 1, char 71", "comment or processing instruction expected")}, 1);
}

// Truncated documents

const char whole_chan_descr[] =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<CHANDESCRIPTIONS><isodate>2021-07-01T13:05:09</isodate>\n<CHANNEL><EVTYPE>6</EVTYPE><PROP>ORVIN/A</"
    "PROP>"
    "<NAME>a&amp;b</NAME><BIT>1</BIT><BIT_NAME>b</BIT_NAME><!-- c --></CHANNEL>\n"
    "<CHANNEL><BIT>2</BIT><DIM>1</DIM><STAT>2</STAT><STAT_NAME><![CDATA[s]]></STAT_NAME><PROP>ORVIN/B</PROP>"
    "<PROP>ORVIN/C</PROP><DIM>2</DIM></CHANNEL>\n<CHANNEL><DIM>1</DIM><STAT>2</STAT><BIT>3</BIT></CHANNEL>"
    "<CHANNEL><BIT>2</BIT><PROP>ORVIN/A</PROP><BIT>3</BIT></CHANNEL></CHANDESCRIPTIONS>";

const char whole_daq_variables[] =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<DAQvariables><DaqBits><orvin>ORVIN/A</orvin><evType>6</evType><bitTitle bit=\"3\"/></DaqBits>\n"
    "<DaqFloatMatrix><dimension id=\"1\"><name>x</name><units>us</units></dimension><orvin>ORVIN/B</orvin>"
    "<lastIndex>99</lastIndex></DaqFloatMatrix><DaqBits><bitTitle bit=\"4\"/></DaqBits>"
    "<DaqBits><bitTitle bit=\"5\"/><orvin>ORVIN/A</orvin><bitTitle bit=\"6\"/></DaqBits></DAQvariables>";

// A leak checker sees what a truncated document leaves behind.
TEST(ParseChanDescrErrors, CountAnErrorForEveryTruncatedDocument) {
    const xml_platform held; // there are many documents
    for (const std::string whole : {whole_chan_descr, whole_daq_variables}) {
        for (reader_form form : both_readers) {
            for (bool delete_duplicated : {false, true}) {
                channel_list list;
                EXPECT_EQ(read_document(form, whole, list, {true, delete_duplicated}).result, 0);
                for (size_t length = 0; length < whole.size(); ++length) {
                    channel_list part;
                    const read_outcome seen =
                        read_document(form, whole.substr(0, length), part, {true, delete_duplicated});
                    EXPECT_GT(seen.result, 0) << reader_name(form) << ": " << whole.substr(0, length);
                    EXPECT_NE(seen.err, "") << reader_name(form) << ": " << whole.substr(0, length);
                }
            }
        }
    }
}

// Missing arguments and files

TEST(ParseChanDescrErrors, RefuseNullArgumentsWithoutAWord) {
    channel_list list;
    list.add(make_channel("ORVIN/OLD"));
    const std::string before = describe(list.records);
    std::string document = "<CHANDESCRIPTIONS><CHANNEL><PROP>ORVIN/A</PROP></CHANNEL></CHANDESCRIPTIONS>";
    for (bool flag : {false, true}) {
        const captured seen = capture([&] {
            EXPECT_EQ(parse_descr_list_read(document.data(), nullptr, flag, flag), 2);
            EXPECT_EQ(parse_descr_list_read(nullptr, nullptr, flag, flag), 2);
            EXPECT_EQ(parse_descr_list_read(nullptr, list, flag, flag), 1);
            EXPECT_EQ(parse_descr_list_readf(nullptr, list, flag, flag), 1);
        });
        EXPECT_EQ(seen.out, "");
        EXPECT_EQ(seen.err, "");
    }
    EXPECT_EQ(describe(list.records), before);
}

TEST(ParseChanDescrErrors, LookAtTheListBeforeTheDocument) {
    std::string bad = "<r";
    const captured seen =
        capture([&] { EXPECT_EQ(parse_descr_list_read(bad.data(), nullptr, false, false), 2); });
    EXPECT_EQ(seen.err, "");
}

/// Reading `path` must fail at the start with this message.
void expect_no_start(char *path, const std::string &message) {
    channel_list list;
    int result = 0;
    const captured seen = capture([&] { result = parse_descr_list_readf(path, list, false, false); });
    EXPECT_EQ(result, 1);
    EXPECT_EQ(seen.out, "");
    EXPECT_EQ(seen.err, "\nError during parsing memory stream:\nException message is:  \n" + message + '\n');
    EXPECT_TRUE(list.records.empty());
}

// Kept: a file that cannot be opened is reported with the words of the memory reader, which log scanners
// know.
TEST(ParseChanDescrErrors, ReportAFileThatCannotBeOpened) {
    temporary_folder folder;
    std::string missing = folder / "missing.xml";
    expect_no_start(missing.data(), "unable to open primary document entity '" + missing + "'");
}

TEST(ParseChanDescrErrors, ReportAFolderInPlaceOfAFile) {
    temporary_folder folder;
    expect_no_start(folder.c_path(), "unable to read data from file");
}

} // namespace
