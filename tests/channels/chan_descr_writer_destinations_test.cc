/// Where the channel description writer puts what it writes, in every mode and format, and how it fails.

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/socket.h>

#include "support/chan_descr_writing.h"
#include "support/descriptors.h"
#include "support/without_root.h"

namespace {

const int all_modes[] = {full_table, xml_document, summary_table, 0, 4, -1, INT_MAX, INT_MIN};

/// Three records, two of them of one property.
struct sample_list : channel_list {
    sample_list() {
        add(make_channel("P", "N"))->dtype = 12;
        add(make_channel("P", "later"))->dtype = 1;
        add(make_channel("Q"))->dtype = 0;
    }
};

std::string sample_variable(const std::string &prop, const std::string &daq) {
    return "<DaqFloat>\n<evType>0</evType>\n<orvin>" + prop + "</orvin>\n<daqName>" + daq +
           "</daqName>\n<DBKey>-1</DBKey>\n<setPoint>0</setPoint>\n<sbName></sbName>\n<subSystem></"
           "subSystem>\n"
           "<description></description>\n<units></units>\n<freq>1</freq>\n</DaqFloat>\n";
}

std::string sample_channel(const std::string &prop, const std::string &daq, const std::string &dtype) {
    return "<CHANNEL>\n<STREAM>0</STREAM>\n<EVTYPE>0</EVTYPE>\n<DTYPE>" + dtype +
           "</DTYPE>\n<DB_KEY>-1</DB_KEY>\n<COUNT>0</COUNT>\n<SB_NAME></SB_NAME>\n<PROP>" + prop +
           "</PROP>\n<NAME>" + daq +
           "</NAME>\n<SETPOINT>0</SETPOINT>\n<SUBSYSTEM></SUBSYSTEM>\n<UNITS></UNITS>\n<DESC></DESC>\n"
           "<SIZE>1</SIZE>\n</CHANNEL>\n";
}

std::string sample_document(int format) {
    return format == chandescriptions
               ? chandescriptions_document(sample_channel("P", "N", "12") +
                                           sample_channel("Q", "!!!UNDEFINED!!!", "0"))
               : daqvariables_document(sample_variable("P", "N") + sample_variable("Q", "!!!UNDEFINED!!!"));
}

/// What a file holds of the sample; a document's date line is not part of it.
std::string sample_in_file(int mode, int format) {
    if (mode == full_table)
        return "0\t0\tN\tP\t0\t\"\"\t\"\"\t1\t0\t0\n0\t0\t!!!UNDEFINED!!!\tQ\t0\t\"\"\t\"\"\t1\t0\t0\n";
    if (mode == summary_table)
        return std::string(49, ' ') + "N\t1\tENV_DICT_BLOCK\n" + std::string(35, ' ') +
               "!!!UNDEFINED!!!\t1\tUNKNOWN\n";
    return mode == xml_document ? sample_document(format) : "";
}

std::string case_name(int mode, int format) {
    return "mode " + std::to_string(mode) + ", format " + std::to_string(format);
}

} // namespace

TEST(ChanDescrWriterDestinations, EachCombinationGetsWhatItsModeWrites) {
    for (int mode : all_modes)
        for (int format : {chandescriptions, daqvariables})
            for (unsigned combination = 1; combination < 8; ++combination) {
                const bool to_file = combination & 1, to_fd = combination & 2, to_string = combination & 4;
                SCOPED_TRACE(case_name(mode, format) + (to_file ? " file" : "") + (to_fd ? " fd" : "") +
                             (to_string ? " string" : ""));
                const std::string document = mode == xml_document ? sample_document(format) : "";
                sample_list list;
                const temporary_file file("what was in the file before, longer than some of the outputs");
                const memory_file target;
                std::string text = "before ";
                const std::string since = local_date();
                const size_t opened = open_descriptors();

                const dump_outcome seen = dump(list, to_file ? &file.path() : nullptr, mode, format,
                                               to_fd ? target.fd() : -1, to_string ? &text : nullptr);

                EXPECT_EQ(seen.result, 0);
                EXPECT_EQ(open_descriptors(), opened);
                EXPECT_EQ(seen.streams.err, "");
                // The summary table sends an empty line per looked-up block name to standard output.
                EXPECT_EQ(seen.streams.out, to_file && mode == summary_table ? "\n" : "");
                const bool dated = to_file && mode == xml_document && format == chandescriptions;
                if (to_file) {
                    EXPECT_EQ(dated ? without_date_line(file.text(), "CHANDESCRIPTIONS", since) : file.text(),
                              sample_in_file(mode, format));
                }
                if (to_fd) {
                    EXPECT_EQ(dated ? without_date_line(target.text(), "CHANDESCRIPTIONS", since)
                                    : target.text(),
                              document);
                }
                if (dated && to_string)
                    EXPECT_EQ(text, "before " + file.text());
                else
                    EXPECT_EQ(text, to_string ? "before " + document : "before ");
            }
}

TEST(ChanDescrWriterDestinations, TheSameDateLineGoesToEveryDestinationWhenThereIsAFile) {
    sample_list list;
    const temporary_file file;
    const memory_file target;
    std::string text;
    EXPECT_EQ(dump(list, &file.path(), xml_document, chandescriptions, target.fd(), &text).result, 0);
    EXPECT_EQ(text, file.text());
    EXPECT_EQ(target.text(), file.text());
    EXPECT_EQ(text.size(), sample_document(chandescriptions).size() + 40);
}

TEST(ChanDescrWriterDestinations, WithNoneTheWholeListIsPrintedOnceInEveryMode) {
    const std::string no_file;
    for (int mode : all_modes)
        for (int format : {chandescriptions, daqvariables})
            for (const std::string *name : {static_cast<const std::string *>(nullptr), &no_file}) {
                SCOPED_TRACE(case_name(mode, format));
                sample_list list;
                const dump_outcome seen = dump(list, name, mode, format, -1, nullptr);
                EXPECT_EQ(seen.result, 0);
                EXPECT_EQ(seen.streams.err, "");
                EXPECT_EQ(seen.streams.out, listing_of(list.records)); // the duplicate is listed, too
            }
}

TEST(ChanDescrWriterDestinations, WithNoneAnEmptyListPrintsNothing) {
    for (int mode : all_modes)
        for (int format : {chandescriptions, daqvariables}) {
            channel_list list;
            const dump_outcome seen = dump(list, nullptr, mode, format, -1, nullptr);
            EXPECT_EQ(seen.result, 0) << case_name(mode, format);
            EXPECT_EQ(seen.streams.out + seen.streams.err, "") << case_name(mode, format);
        }
}

TEST(ChanDescrWriterDestinations, AnEmptyListGivesAnEmptyDocumentOrAnEmptyFile) {
    for (int mode : all_modes)
        for (int format : {chandescriptions, daqvariables}) {
            SCOPED_TRACE(case_name(mode, format));
            channel_list list;
            const temporary_file file("old content");
            const std::string since = local_date();
            const dump_outcome seen = dump(list, &file.path(), mode, format, -1, nullptr);
            EXPECT_EQ(seen.result, 0);
            EXPECT_EQ(seen.streams.out + seen.streams.err, "");
            if (mode != xml_document)
                EXPECT_EQ(file.text(), "");
            else if (format == daqvariables)
                EXPECT_EQ(file.text(), daqvariables_document(""));
            else
                EXPECT_EQ(without_date_line(file.text(), "CHANDESCRIPTIONS", since),
                          chandescriptions_document(""));
        }
}

TEST(ChanDescrWriterDestinations, AFileThatIsNotThereIsCreatedInEveryMode) {
    for (int mode : all_modes)
        for (int format : {chandescriptions, daqvariables}) {
            sample_list list;
            const temporary_folder folder;
            const std::string path = folder / "new.xml";
            EXPECT_EQ(dump(list, &path, mode, format, -1, nullptr).result, 0) << case_name(mode, format);
            EXPECT_TRUE(std::filesystem::exists(path)) << case_name(mode, format);
        }
}

namespace {

const int invalid_formats[] = {2, 3, -1, INT_MAX, INT_MIN};
const std::string invalid_argument_line = "dump_chan_desr() invalid argument: '\n";

} // namespace

TEST(ChanDescrWriterDestinations, AnUnknownFormatIsRefusedInEveryModeBeforeAnythingIsOpened) {
    for (int mode : all_modes)
        for (int format : invalid_formats) {
            SCOPED_TRACE(case_name(mode, format));
            sample_list list;
            const temporary_file old_file("untouched");
            const temporary_folder folder;
            const std::string new_path = folder / "new.xml", bad_path = folder / "missing/new.xml";
            for (const std::string *path : {&old_file.path(), &new_path, &bad_path}) {
                const memory_file target;
                std::string text = "before";
                const dump_outcome seen = dump(list, path, mode, format, target.fd(), &text);
                EXPECT_EQ(seen.result, 2);
                EXPECT_EQ(seen.streams.out, invalid_argument_line);
                EXPECT_EQ(seen.streams.err, "");
                EXPECT_EQ(target.text(), "");
                EXPECT_EQ(text, "before");
            }
            EXPECT_EQ(old_file.text(), "untouched");
            EXPECT_FALSE(std::filesystem::exists(new_path));
            EXPECT_EQ(dump(list, nullptr, mode, format, -1, nullptr).streams.out, invalid_argument_line);
        }
}

TEST(ChanDescrWriterDestinations, ANullListIsRefusedInEveryModeBeforeAnythingIsOpened) {
    for (int mode : all_modes)
        for (int format : {chandescriptions, daqvariables, 2, -1}) {
            SCOPED_TRACE(case_name(mode, format));
            const temporary_file file("untouched");
            std::string text = "before";
            const dump_outcome seen = dump(nullptr, &file.path(), mode, format, -1, &text);
            EXPECT_EQ(seen.result, 2);
            EXPECT_EQ(seen.streams.out, invalid_argument_line);
            EXPECT_EQ(seen.streams.err, "");
            EXPECT_EQ(file.text(), "untouched");
            EXPECT_EQ(text, "before");
        }
}

namespace {

/// The writer and the conversion, with the sample list as their own; a conversion has no string.
struct sample_writer {
    const char *name;
    dump_outcome (*write)(const std::string &path, int mode, int format, int fd, std::string *sout);
};
const sample_writer sample_writers[] = {
    {"writer",
     [](const std::string &path, int mode, int format, int fd, std::string *sout) {
         sample_list list;
         return dump(list, &path, mode, format, fd, sout);
     }},
    {"conversion",
     [](const std::string &path, int mode, int format, int fd, std::string *) {
         return convert(sample_document(chandescriptions).c_str(), &path, mode, format, fd);
     }},
};

void expect_failed_open(const std::string &path, int error) {
    for (const sample_writer &writer : sample_writers)
        for (int mode : all_modes)
            for (int format : {chandescriptions, daqvariables}) {
                SCOPED_TRACE(path.substr(0, 100) + ", " + writer.name + ", " + case_name(mode, format));
                const memory_file target;
                std::string text = "before";
                const size_t opened = open_descriptors();
                const dump_outcome seen = writer.write(path, mode, format, target.fd(), &text);
                EXPECT_EQ(seen.result, 1);
                EXPECT_EQ(seen.streams.out, "dump_chan_desr() failed to open file: '" + path + "'\n");
                EXPECT_EQ(seen.streams.err, std::string("fopen: ") + strerror(error) + "\n");
                EXPECT_EQ(target.text(), "");
                EXPECT_EQ(text, "before");
                EXPECT_EQ(open_descriptors(), opened);
            }
}

} // namespace

TEST(ChanDescrWriterDestinations, AFileThatCannotBeOpenedEndsTheCallBeforeAnythingIsWritten) {
    const temporary_folder folder;
    const std::pair<std::string, int> cases[] = {{folder / "missing/out.xml", ENOENT},
                                                 {folder.path(), EISDIR},
                                                 {std::string(5000, 'x'), ENAMETOOLONG}};
    for (const auto &[path, error] : cases)
        expect_failed_open(path, error);
}

TEST(ChanDescrWriterDestinations, AFolderThatMayOnlyBeReadGetsNoFile) {
    const read_only_folder folder;
    EXPECT_TRUE(holds_without_root([&] { expect_failed_open(folder / "out.xml", EACCES); }));
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

// A full device shows only when the file is flushed or closed; that is not reported, and what comes after
// goes on.
TEST(ChanDescrWriterDestinations, AFullFileIsNotReported) {
    const std::string full = "/dev/full";
    for (int mode : all_modes)
        for (int format : {chandescriptions, daqvariables})
            for (int channels : {1, 2000}) { // within the stream's buffer and far beyond it
                SCOPED_TRACE(case_name(mode, format) + ", channels " + std::to_string(channels));
                channel_list list;
                for (int i = 0; i < channels; ++i)
                    list.add(make_channel(std::to_string(i).c_str()));
                const memory_file target;
                std::string text;
                const dump_outcome seen = dump(list, &full, mode, format, target.fd(), &text);
                EXPECT_EQ(seen.result, 0);
                EXPECT_EQ(seen.streams.out + seen.streams.err, "");
                EXPECT_EQ(text.empty(), mode != xml_document);
                EXPECT_EQ(target.text(), text);
            }
}

namespace {

const std::string write_failed_line = "dump_chan_desr()  write failed\n";

/// A failed write to `fd`: the file is complete though still open, the string gets nothing.
void expect_failed_write(int fd, int channels) {
    for (int format : {chandescriptions, daqvariables}) {
        SCOPED_TRACE("format " + std::to_string(format) + ", channels " + std::to_string(channels));
        channel_list list;
        for (int i = 0; i < channels; ++i)
            list.add(make_channel(std::to_string(i).c_str()));
        const std::string document = xml_of(list, format), since = local_date();
        const temporary_file file("old content");
        std::string text = "before";
        const size_t opened = open_descriptors();

        const dump_outcome seen = dump(list, &file.path(), xml_document, format, fd, &text);

        EXPECT_EQ(seen.result, 2);
        EXPECT_EQ(seen.streams.out, write_failed_line);
        EXPECT_EQ(seen.streams.err, "");
        EXPECT_EQ(text, "before");
        EXPECT_TRUE((format == chandescriptions ? without_date_line(file.text(), "CHANDESCRIPTIONS", since)
                                                : file.text()) == document);
        EXPECT_EQ(open_descriptors(), opened + 1); // the file, which stays open

        const dump_outcome without_file = dump(list, nullptr, xml_document, format, fd, &text);
        EXPECT_EQ(without_file.result, 2);
        EXPECT_EQ(without_file.streams.out, write_failed_line);
        EXPECT_EQ(text, "before");
        EXPECT_EQ(open_descriptors(), opened + 1);
    }
}

} // namespace

TEST(ChanDescrWriterDestinations, AFailedWriteLeavesTheFileCompleteAndTheStringUnchanged) {
    const int full = open("/dev/full", O_WRONLY | O_CLOEXEC),
              unwritable = open("/dev/null", O_RDONLY | O_CLOEXEC);
    ASSERT_GE(full, 0);
    ASSERT_GE(unwritable, 0);
    for (int channels : {0, 1, 1000})
        for (int fd : {full, unwritable, closed_descriptor(), -2, INT_MAX, INT_MIN})
            expect_failed_write(fd, channels);
    close(full);
    close(unwritable);
}

// Flushing all streams of the process would wait for every thread that reads from one.
TEST(ChanDescrWriterDestinations, AFailedWriteWithoutAFileLeavesOtherStreamsAlone) {
    const temporary_file other;
    FILE *const stream = fopen(other.path().c_str(), "w");
    ASSERT_TRUE(stream);
    fputs("still buffered", stream);
    sample_list list;
    EXPECT_EQ(dump(list, nullptr, xml_document, chandescriptions, closed_descriptor(), nullptr).result, 2);
    EXPECT_EQ(other.text(), "");
    fclose(stream);
    EXPECT_EQ(other.text(), "still buffered");
}

// The tables never go to the descriptor, so that it cannot fail.
TEST(ChanDescrWriterDestinations, ABadDescriptorDoesNotMatterToTheOtherModes) {
    for (int mode : all_modes)
        for (int format : {chandescriptions, daqvariables}) {
            if (mode == xml_document)
                continue;
            sample_list list;
            const temporary_file file;
            const dump_outcome seen = dump(list, &file.path(), mode, format, closed_descriptor(), nullptr);
            EXPECT_EQ(seen.result, 0) << case_name(mode, format);
            EXPECT_EQ(seen.streams.out, mode == summary_table ? "\n" : "") << case_name(mode, format);
            EXPECT_EQ(file.text(), sample_in_file(mode, format)) << case_name(mode, format);
        }
}

TEST(ChanDescrWriterDestinations, ADescriptorGetsTheDocumentInOneWrite) {
    channel_list list;
    for (int i = 0; i < 300; ++i)
        list.add(make_channel(std::to_string(i).c_str()));
    for (int format : {chandescriptions, daqvariables}) {
        int ends[2];
        ASSERT_EQ(socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends), 0); // keeps writes apart
        const std::string document = xml_of(list, format);
        EXPECT_EQ(dump(list, nullptr, xml_document, format, ends[0], nullptr).result, 0);
        std::string packet(2 * document.size(), '\0');
        const ssize_t got = recv(ends[1], packet.data(), packet.size(), MSG_DONTWAIT);
        EXPECT_EQ(got, static_cast<ssize_t>(document.size()));
        packet.resize(static_cast<size_t>(std::max<ssize_t>(got, 0)));
        EXPECT_TRUE(packet == document);
        EXPECT_EQ(recv(ends[1], packet.data(), packet.size(), MSG_DONTWAIT), -1);
        close(ends[0]);
        close(ends[1]);
    }
}

TEST(ChanDescrWriterDestinations, AShortWriteIsNotNoticed) {
    channel_list list;
    for (int i = 0; i < 1000; ++i)
        list.add(make_channel(std::to_string(i).c_str()));
    const std::string document = xml_of(list, chandescriptions);
    int ends[2];
    ASSERT_EQ(pipe2(ends, O_NONBLOCK | O_CLOEXEC), 0);
    const auto capacity = static_cast<size_t>(fcntl(ends[1], F_GETPIPE_SZ));
    ASSERT_LT(capacity, document.size());
    std::string text;
    const dump_outcome seen = dump(list, nullptr, xml_document, chandescriptions, ends[1], &text);
    EXPECT_EQ(seen.result, 0);
    EXPECT_EQ(seen.streams.out + seen.streams.err, "");
    EXPECT_TRUE(text == document);
    std::string received(document.size(), '\0');
    const ssize_t got = read(ends[0], received.data(), received.size());
    EXPECT_EQ(got, static_cast<ssize_t>(capacity));
    EXPECT_EQ(document.compare(0, capacity, received, 0, capacity), 0);
    close(ends[0]);
    close(ends[1]);
}
