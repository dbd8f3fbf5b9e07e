/// The usual doors to channel descriptions: the blob of a data block, the master file, and the conversion of
/// a document. Each fixes how it reads; the reader and the writer themselves have tests of their own.

#include <climits>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <memory>

#include "support/chan_descr_writing.h"

namespace {

/// A blob in memory that is exactly as long as its head and text, or as asked for, so that reading past its
/// end shows.
class blob {
public:
    blob(std::uint32_t pattern, std::int32_t length, const std::string &text)
        : size_(sizeof(zeb5_xml_chan_descr_header) + text.size()), bytes_(std::make_unique<char[]>(size_)) {
        memcpy(bytes_.get(), &pattern, 4);
        memcpy(bytes_.get() + 4, &length, 4);
        memcpy(bytes_.get() + 8, text.data(), text.size());
    }
    explicit blob(const std::string &text)
        : blob(0xCDECDEF2, static_cast<std::int32_t>(sizeof(zeb5_xml_chan_descr_header) + text.size()),
               text) {}

    const zeb5_xml_chan_descr_header *get() const {
        return reinterpret_cast<const zeb5_xml_chan_descr_header *>(bytes_.get());
    }
    std::string bytes() const { return std::string(bytes_.get(), size_); }

private:
    size_t size_;
    std::unique_ptr<char[]> bytes_;
};

/// What reading gave: the result, the records and the messages.
struct reading {
    int result;
    std::string records;
    captured streams;
    bool operator==(const reading &other) const {
        return result == other.result && records == other.records && streams.out == other.streams.out &&
               streams.err == other.streams.err;
    }
};
std::ostream &operator<<(std::ostream &to, const reading &r) {
    return to << "result " << r.result << '\n'
              << r.records << "out: " << r.streams.out << "err: " << r.streams.err;
}

template <class Read> reading read_with(Read &&read) {
    channel_list list;
    reading seen{-1000, "", {}};
    seen.streams = capture([&] { seen.result = read(&list.records); });
    seen.records = describe(list.records);
    return seen;
}

reading load_blob(const blob &b) {
    return read_with([&](auto *list) { return zeb5_load_chan_descr(b.get(), list); });
}
reading load_master(std::string path) {
    return read_with(
        [&](auto *list) { return zeb5_load_master_daq_channel_description_file(list, path.data()); });
}
/// What the loaders promise to be the same as.
reading read_text(std::string text) {
    return read_with([&](auto *list) { return parse_descr_list_read(text.data(), list, false, true); });
}
reading read_file(std::string path) {
    return read_with([&](auto *list) { return parse_descr_list_readf(path.data(), list, false, true); });
}

const char *const two_of_one_property = "<CHANDESCRIPTIONS>\n"
                                        "<CHANNEL><STREAM>1</STREAM><EVTYPE>3</EVTYPE><DTYPE>41</DTYPE>"
                                        "<PROP>P</PROP><NAME>N</NAME></CHANNEL>\n"
                                        "<CHANNEL><STREAM>2</STREAM><EVTYPE>4</EVTYPE><DTYPE>42</DTYPE>"
                                        "<PROP>P</PROP><NAME>M</NAME></CHANNEL>\n"
                                        "</CHANDESCRIPTIONS>\n";
const char *const two_variables_of_one_property =
    "<DAQvariables>\n"
    "<DaqFloat><evType>1</evType><orvin>P</orvin><daqName>N</daqName></DaqFloat>\n"
    "<DaqFloat><evType>2</evType><orvin>P</orvin><daqName>M</daqName></DaqFloat>\n"
    "</DAQvariables>\n";
const char *const wrong_root_line =
    "WRONG root tag: 'chandescriptions' must be 'CHANDESCRIPTIONS or DAQvariables'\n";

/// The records of the documents above as text.
std::string described(const char *daq, unsigned ev_type, unsigned dtype, int stream) {
    channel_list list;
    chan_descr_2010 *channel = list.add(make_channel("P", daq));
    channel->ev_type = ev_type;
    channel->dtype = dtype;
    channel->stream = stream;
    return describe(*channel);
}

} // namespace

TEST(ParseChanDescrBlob, IsReadWithDuplicatesMergedAndNumbersAsTheyStand) {
    const std::string merged = "channel 0\n" + described("N", 3, 41, 3);
    for (std::uint32_t pattern : {0xCDECDEF2U, 0xCDECDEF3U}) {
        const std::string text = two_of_one_property;
        const reading seen = load_blob(blob(pattern, static_cast<std::int32_t>(8 + text.size()), text));
        EXPECT_EQ(seen, (reading{0, merged, {}})) << std::hex << pattern;
    }
}

TEST(ParseChanDescrBlob, IsReadInTheOtherDialectToo) {
    EXPECT_EQ(load_blob(blob(two_variables_of_one_property)),
              (reading{0, "channel 0\n" + described("N", 1, 0, 0), {}}));
}

TEST(ParseChanDescrBlob, IsAppendedToWhatTheListHolds) {
    const blob b(two_of_one_property);
    channel_list list;
    list.add(make_channel("before"))->stream = 9;
    EXPECT_EQ(zeb5_load_chan_descr(b.get(), list), 0);
    EXPECT_EQ(zeb5_load_chan_descr(b.get(), list), 0); // merges into the record of the first time
    ASSERT_EQ(list.records.size(), 2u);
    EXPECT_STREQ(list.records[0]->prop_name, "before");
    EXPECT_EQ(describe(*list.records[1]), described("N", 3, 41, 3));
}

TEST(ParseChanDescrBlob, IsNotChanged) {
    const blob b(two_of_one_property);
    const std::string before = b.bytes();
    load_blob(b);
    EXPECT_EQ(b.bytes(), before);
}

TEST(ParseChanDescrBlob, EndsWhereItsLengthSays) {
    const std::string document = two_of_one_property;
    const auto length = static_cast<std::int32_t>(8 + document.size());
    const reading whole = read_text(document);
    // What follows in the data block is none of its text.
    EXPECT_EQ(load_blob(blob(0xCDECDEF2, length, document + "<junk & more")), whole);
    EXPECT_EQ(load_blob(blob(0xCDECDEF2, length, document + std::string(8, '\0'))), whole);
    // The same bytes belong to it when its length says so.
    EXPECT_EQ(load_blob(blob(document + "<junk & more")), read_text(document + "<junk & more"));
    EXPECT_GT(load_blob(blob(document + "<junk & more")).result, 0);
}

TEST(ParseChanDescrBlob, OfEveryLengthReadsLikeTheTextThatItHolds) {
    const std::string document = two_of_one_property;
    for (size_t length = 1; length <= document.size(); ++length) {
        const std::string text = document.substr(0, length);
        ASSERT_EQ(load_blob(blob(text)), read_text(text)) << text;
    }
}

TEST(ParseChanDescrBlob, ANulEndsItsText) {
    const std::string document = two_of_one_property, nul(1, '\0');
    const reading whole = read_text(document);
    EXPECT_EQ(load_blob(blob(document + nul)), whole); // producers pad their blobs
    EXPECT_EQ(load_blob(blob(document + nul + "<junk")), whole);
    EXPECT_EQ(load_blob(blob(document.substr(0, 100) + nul + document.substr(100))),
              read_text(document.substr(0, 100)));
    EXPECT_GT(load_blob(blob(document.substr(0, 100) + nul)).result, 0);
    EXPECT_EQ(load_blob(blob(nul)), read_text(""));
    EXPECT_GT(load_blob(blob(nul)).result, 0);
}

TEST(ParseChanDescrBlob, OfOneByteFailsToParse) {
    for (std::uint32_t pattern : {0xCDECDEF2U, 0xCDECDEF3U})
        for (const char *text : {"<", "x", " ", "\n"}) {
            const reading seen = load_blob(blob(pattern, 9, text));
            EXPECT_GT(seen.result, 0) << '"' << text << '"';
            EXPECT_EQ(seen, read_text(text)) << '"' << text << '"';
        }
}

TEST(ParseChanDescrBlob, WithAWrongRootIsReportedByTheReader) {
    EXPECT_EQ(load_blob(blob("<chandescriptions/>")), (reading{1, "", {"", wrong_root_line}}));
}

TEST(ParseChanDescrBlob, ArgumentsAreCheckedInOrder) {
    constexpr bool no_tab = false, tab = true, no_list = false, list = true;
    constexpr std::uint32_t good = 0xCDECDEF3;
    const struct {
        bool with_tab;
        std::uint32_t pattern;
        std::int32_t length;
        bool with_list;
        int result;
    } cases[] = {
        {no_tab, good, 9, list, -1},    {no_tab, good, 9, no_list, -1}, {tab, good, 9, no_list, -1},
        {tab, 0, 0, no_list, -1},       {tab, 0xCDECDEF1, 9, list, -3}, {tab, 0xCDECDEF4, 9, list, -3},
        {tab, 0xF2DEECCD, 9, list, -3}, {tab, 0xF3DEECCD, 9, list, -3}, {tab, 0x4DECDEF2, 9, list, -3},
        {tab, 0, 9, list, -3},          {tab, 0xFFFFFFFF, 9, list, -3}, {tab, 0, 0, list, -3},
        {tab, 0, INT32_MIN, list, -3},  {tab, 0xCDECDEF2, 8, list, -4}, {tab, 0xCDECDEF3, 8, list, -4},
        {tab, 0xCDECDEF2, 7, list, -4}, {tab, good, 1, list, -4},       {tab, good, 0, list, -4},
        {tab, good, -1, list, -4},      {tab, good, -8, list, -4},      {tab, good, INT32_MIN, list, -4},
    };
    for (const auto &c : cases) {
        const blob b(c.pattern, c.length, "x");
        const reading seen = read_with([&](auto *to) {
            return zeb5_load_chan_descr(c.with_tab ? b.get() : nullptr, c.with_list ? to : nullptr);
        });
        EXPECT_EQ(seen, (reading{c.result, "", {}}))
            << std::hex << c.pattern << ", length " << std::dec << c.length;
    }
}

TEST(ParseChanDescrMasterFile, IsReadWithNumbersAsTheyStandAndEveryChannelOfAProperty) {
    const temporary_file file(two_of_one_property);
    EXPECT_EQ(load_master(file.path()),
              (reading{0,
                       "channel 0\n" + described("N", 3, 41, 1) + "channel 1\n" + described("M", 4, 42, 2),
                       {}}));
}

TEST(ParseChanDescrMasterFile, MergesDuplicatesOfTheOtherDialect) {
    const temporary_file file(two_variables_of_one_property);
    EXPECT_EQ(load_master(file.path()), (reading{0, "channel 0\n" + described("N", 3, 0, 0), {}}));
}

TEST(ParseChanDescrMasterFile, IsAppendedToWhatTheListHolds) {
    temporary_file file(two_of_one_property);
    channel_list list;
    list.add(make_channel("before"));
    EXPECT_EQ(zeb5_load_master_daq_channel_description_file(list, file.c_path()), 0);
    ASSERT_EQ(list.records.size(), 3u);
    EXPECT_STREQ(list.records[0]->prop_name, "before");
}

TEST(ParseChanDescrMasterFile, ANullArgumentOrAnEmptyPathStartsNoParser) {
    temporary_file file(two_of_one_property);
    std::string empty;
    using list_type = std::vector<chan_descr_2010 *>;
    const auto load = [](list_type *list, char *path) {
        return read_with([&](list_type *own) {
            return zeb5_load_master_daq_channel_description_file(list ? own : nullptr, path);
        });
    };
    list_type some;
    const reading refused{-1, "", {}};
    EXPECT_EQ(load(nullptr, file.c_path()), refused);
    EXPECT_EQ(load(&some, nullptr), refused);
    EXPECT_EQ(load(&some, empty.data()), refused);
    EXPECT_EQ(load(nullptr, nullptr), refused);
    EXPECT_EQ(load(nullptr, empty.data()), refused);
}

TEST(ParseChanDescrMasterFile, AReadersFailureIsHandedOn) {
    const temporary_file wrong_root("<chandescriptions/>"), broken("<CHANDESCRIPTIONS><CHANNEL>"), empty;
    const temporary_folder folder;
    EXPECT_EQ(load_master(wrong_root.path()), (reading{1, "", {"", wrong_root_line}}));
    for (const std::string &path : {broken.path(), empty.path(), folder / "missing.xml"}) {
        const reading seen = load_master(path);
        EXPECT_GT(seen.result, 0) << path;
        EXPECT_NE(seen.streams.err, "") << path;
        EXPECT_EQ(seen, read_file(path));
    }
}

namespace {

/// The records that the conversion must have made of two_of_one_property: masks, and duplicates merged.
struct converted_list : channel_list {
    converted_list() {
        chan_descr_2010 *channel = add(make_channel("P", "N"));
        channel->ev_type = 8;
        channel->dtype = 0x80000200;
        channel->stream = 3;
    }
};

const std::string not_parsed_line = "Failed to parse CHANDESCR list\n";

} // namespace

TEST(ParseChanDescrConversion, WritesWhatTheWriterWritesOfMaskedAndMergedRecords) {
    converted_list list;
    for (int mode : {full_table, xml_document, summary_table, 0, 4, -1})
        for (int format : {chandescriptions, daqvariables}) {
            SCOPED_TRACE("mode " + std::to_string(mode) + ", format " + std::to_string(format));
            const temporary_file file("old"), expected;
            const std::string since = local_date();
            const dump_outcome seen = convert(two_of_one_property, &file.path(), mode, format, -1);
            const dump_outcome direct = dump(list, &expected.path(), mode, format, -1, nullptr);
            EXPECT_EQ(seen.result, 0);
            EXPECT_EQ(seen.streams.err, "");
            EXPECT_EQ(seen.streams.out, direct.streams.out);
            if (mode == xml_document && format == chandescriptions)
                EXPECT_EQ(without_date_line(file.text(), "CHANDESCRIPTIONS", since),
                          without_date_line(expected.text(), "CHANDESCRIPTIONS", since));
            else
                EXPECT_EQ(file.text(), expected.text());
        }
}

TEST(ParseChanDescrConversion, WritesTheFullTableOfADocument) {
    const temporary_file file;
    EXPECT_EQ(convert(two_of_one_property, &file.path(), full_table, chandescriptions, -1).result, 0);
    EXPECT_EQ(file.text(), "3\t8\tN\tP\t0\t\"\"\t\"\"\t1\t0\t0\n");
}

TEST(ParseChanDescrConversion, WritesToADescriptor) {
    converted_list list;
    for (int format : {chandescriptions, daqvariables}) {
        const temporary_file target;
        const int fd = open(target.path().c_str(), O_WRONLY | O_CLOEXEC);
        const dump_outcome seen = convert(two_of_one_property, nullptr, xml_document, format, fd);
        close(fd);
        EXPECT_EQ(seen.result, 0);
        EXPECT_EQ(seen.streams.out + seen.streams.err, "");
        EXPECT_EQ(target.text(), xml_of(list, format));
    }
}

TEST(ParseChanDescrConversion, PrintsTheRecordsWhenThereIsNoDestination) {
    converted_list list;
    for (int mode : {full_table, xml_document, summary_table, 0}) {
        const dump_outcome seen = convert(two_of_one_property, nullptr, mode, chandescriptions, -1);
        EXPECT_EQ(seen.result, 0);
        EXPECT_EQ(seen.streams.out, listing_of(list.records));
        EXPECT_EQ(seen.streams.err, "");
    }
}

TEST(ParseChanDescrConversion, HandsOnWhatTheWriterReports) {
    const temporary_folder folder;
    const std::string bad = folder / "missing/out.xml", good = folder / "out.xml";
    const dump_outcome unopened = convert(two_of_one_property, &bad, xml_document, chandescriptions, -1);
    EXPECT_EQ(unopened.result, 1);
    EXPECT_EQ(unopened.streams.out, "dump_chan_desr() failed to open file: '" + bad + "'\n");
    EXPECT_EQ(unopened.streams.err, "fopen: No such file or directory\n");
    const dump_outcome invalid = convert(two_of_one_property, &good, xml_document, 2, -1);
    EXPECT_EQ(invalid.result, 2);
    EXPECT_EQ(invalid.streams.out, "dump_chan_desr() invalid argument: '\n");
    EXPECT_FALSE(std::filesystem::exists(good));
    const dump_outcome unwritten = convert(two_of_one_property, nullptr, xml_document, chandescriptions, -2);
    EXPECT_EQ(unwritten.result, 2);
    EXPECT_EQ(unwritten.streams.out, "dump_chan_desr()  write failed\n");
}

TEST(ParseChanDescrConversion, WithAWrongRootWritesNothing) {
    const temporary_file file("old");
    const dump_outcome seen =
        convert("<chandescriptions/>", &file.path(), xml_document, chandescriptions, -1);
    EXPECT_EQ(seen.result, 3);
    EXPECT_EQ(seen.streams.err, wrong_root_line);
    EXPECT_EQ(seen.streams.out, not_parsed_line);
    EXPECT_EQ(file.text(), "old");
}

// The order on a terminal: the reader's line, then the one of the conversion.
TEST(ParseChanDescrConversion, TellsTheReadersReasonFirst) {
    const captured seen = capture([] {
        const int err = dup(STDERR_FILENO);
        dup2(STDOUT_FILENO, STDERR_FILENO);
        std::string text = "<chandescriptions/>";
        dump_chan_desr_from_xml(text.data(), nullptr, xml_document, chandescriptions, -1);
        fflush(stdout);
        dup2(err, STDERR_FILENO);
        close(err);
    });
    EXPECT_EQ(seen.out, wrong_root_line + not_parsed_line);
}

TEST(ParseChanDescrConversion, OfADocumentWithErrorsWritesNothing) {
    const std::string one_channel = "<CHANDESCRIPTIONS><CHANNEL><PROP>P</PROP></CHANNEL>";
    const std::string documents[] = {
        "",
        "x",
        "<CHANDESCRIPTIONS>",
        one_channel,
        one_channel + "</CHANDESCRIPTION>",
        "<DAQvariables><DaqBits><orvin>P</orvin><bitTitle>b</bitTitle></DaqBits></DAQvariables>", // no
                                                                                                  // attribute
    };
    for (const std::string &xml : documents)
        for (int format : {chandescriptions, daqvariables, 2}) { // the format does not matter any more
            const temporary_file file("old");
            std::string text = xml;
            const reading reader =
                read_with([&](auto *list) { return parse_descr_list_read(text.data(), list, true, true); });
            EXPECT_GT(reader.result, 0) << xml;
            const dump_outcome seen = convert(xml.c_str(), &file.path(), xml_document, format, -2);
            EXPECT_EQ(seen.result, 3) << xml;
            EXPECT_EQ(seen.streams.out, reader.streams.out + not_parsed_line) << xml;
            EXPECT_EQ(seen.streams.err, reader.streams.err) << xml;
            EXPECT_EQ(file.text(), "old") << xml;
        }
}

TEST(ParseChanDescrConversion, OfNoDocumentWritesNothing) {
    const temporary_file file("old");
    const dump_outcome seen = convert(nullptr, &file.path(), xml_document, chandescriptions, -1);
    EXPECT_EQ(seen.result, 3);
    EXPECT_EQ(seen.streams.out, not_parsed_line);
    EXPECT_EQ(seen.streams.err, "");
    EXPECT_EQ(file.text(), "old");
}
