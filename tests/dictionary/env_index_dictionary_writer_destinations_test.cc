/// Where the env index dictionary writers put what they write, in every mode, and how they fail.

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <iostream>

#include <stdio_ext.h>
#include <sys/socket.h>

#include "support/descriptors.h"
#include "support/env_dictionary_writing.h"
#include "support/without_root.h"

namespace {

template <class Layout> class EnvIndexDictionaryWriterDestinations : public testing::Test {};

template <class Layout> struct sample_dictionary : dictionary<Layout> {
    sample_dictionary() {
        this->add(3, "ORVIN/A", 0.5F, 0.01F);
        this->add(4, "", 1);
    }
};

const std::string sample_document =
    dictionary_document(dictionary_channel("3", "ORVIN/A", "0.500000", "0.010000") +
                        dictionary_channel("4", "", "1.000000", "0.000000"));
const std::string sample_lines = "3\tORVIN/A\t0.500000\t0.010000\n4\t!!!UNDEFINED!!!\t1.000000\t0.000000\n";

template <class Layout> void add_many(dictionary<Layout> &list, int entries) {
    for (int i = 0; i < entries; ++i)
        list.add(i, "ORVIN/SOME/PROPERTY." + std::to_string(i), 0.5F, 0.01F);
}

} // namespace

TYPED_TEST_SUITE(EnvIndexDictionaryWriterDestinations, both_layouts);

TYPED_TEST(EnvIndexDictionaryWriterDestinations, EachCombinationGetsWhatItsModeWrites) {
    for (int mode : all_dictionary_modes)
        for (unsigned combination = 1; combination < 8; ++combination) {
            const bool to_file = combination & 1, to_fd = combination & 2, to_text = combination & 4;
            SCOPED_TRACE("mode " + std::to_string(mode) + (to_file ? " file" : "") + (to_fd ? " fd" : "") +
                         (to_text ? " string" : ""));
            sample_dictionary<TypeParam> list;
            const std::string old_content = "what was in the file before, longer than some of the outputs";
            const temporary_file file(old_content);
            const memory_file target;
            std::string text = "before";
            const std::string since = local_date();
            const std::size_t opened = open_descriptors();

            const dump_outcome seen =
                dump_dictionary<TypeParam>(&list.entries, to_file ? &file.path() : nullptr, mode,
                                           to_fd ? target.fd() : -1, to_text ? &text : nullptr);

            const bool refused = mode == text_lines && !to_file; // the lines have nowhere else to go
            const bool whole = mode == xml_to_file_and_fd;
            EXPECT_EQ(seen.result, refused ? 2 : 0);
            EXPECT_EQ(seen.streams.out,
                      refused   ? invalid_argument_line<TypeParam>()
                      : to_file ? created_line<TypeParam>(file.path()) + closed_line<TypeParam>(file.path())
                                : "");
            EXPECT_EQ(seen.streams.err, "");
            EXPECT_EQ(open_descriptors(), opened);
            const std::string in_file = whole ? sample_document : mode == text_lines ? sample_lines : "";
            EXPECT_EQ(to_file && whole ? without_dictionary_date(file.text(), since) : file.text(),
                      to_file ? in_file : old_content);
            EXPECT_EQ(to_fd && whole ? without_dictionary_date(target.text(), since) : target.text(),
                      to_fd && whole ? sample_document : "");
            const bool in_text = to_text && mode == xml_to_string;
            EXPECT_EQ(in_text ? without_dictionary_date(text, since) : text,
                      in_text ? sample_document : "before");
            if (to_file && to_fd && whole) {
                EXPECT_EQ(target.text(), file.text()); // the same date, too
            }
        }
}

TYPED_TEST(EnvIndexDictionaryWriterDestinations, AnEmptyListGivesAnEmptyDocumentOrAnEmptyFile) {
    for (int mode : all_dictionary_modes) {
        dictionary<TypeParam> list;
        const temporary_file file("old content");
        const std::string since = local_date();
        const dump_outcome seen = dump_dictionary<TypeParam>(&list.entries, &file.path(), mode, -1, nullptr);
        EXPECT_EQ(seen.result, 0) << mode;
        EXPECT_EQ(seen.streams.out,
                  created_line<TypeParam>(file.path()) + closed_line<TypeParam>(file.path()));
        const bool whole = mode == xml_to_file_and_fd;
        EXPECT_EQ(whole ? without_dictionary_date(file.text(), since) : file.text(),
                  whole ? dictionary_document("") : "")
            << mode;
    }
}

TYPED_TEST(EnvIndexDictionaryWriterDestinations, NoEntriesNeedNowhereToGoAsLines) {
    dictionary<TypeParam> list;
    const memory_file target;
    std::string text = "before";
    const dump_outcome seen =
        dump_dictionary<TypeParam>(&list.entries, nullptr, text_lines, target.fd(), &text);
    EXPECT_EQ(seen.result, 0);
    EXPECT_EQ(seen.streams.out + seen.streams.err, "");
    EXPECT_EQ(target.text(), "");
    EXPECT_EQ(text, "before");
}

TYPED_TEST(EnvIndexDictionaryWriterDestinations, AFileThatIsNotThereIsCreatedInEveryMode) {
    for (int mode : all_dictionary_modes) {
        sample_dictionary<TypeParam> list;
        const temporary_folder folder;
        const std::string path = folder / "new.xml";
        EXPECT_EQ(dump_dictionary<TypeParam>(&list.entries, &path, mode, -1, nullptr).result, 0) << mode;
        EXPECT_TRUE(std::filesystem::exists(path)) << mode;
    }
}

// Failures

TYPED_TEST(EnvIndexDictionaryWriterDestinations, ANullListIsRefusedInEveryModeBeforeAnythingIsOpened) {
    const temporary_folder folder;
    const std::string new_path = folder / "new.xml", bad_path = folder / "missing/new.xml";
    for (int mode : all_dictionary_modes)
        for (const std::string *path : {static_cast<const std::string *>(nullptr), &new_path, &bad_path})
            for (int fd : {-1, closed_descriptor()}) {
                std::string text = "before";
                const dump_outcome seen = dump_dictionary<TypeParam>(nullptr, path, mode, fd, &text);
                EXPECT_EQ(seen.result, 2) << mode;
                EXPECT_EQ(seen.streams.out, invalid_argument_line<TypeParam>()) << mode;
                EXPECT_EQ(seen.streams.err, "") << mode;
                EXPECT_EQ(text, "before") << mode;
                EXPECT_FALSE(std::filesystem::exists(new_path)) << mode;
                EXPECT_EQ(dump_dictionary<TypeParam>(nullptr, path, mode, fd, nullptr).result, 2) << mode;
            }
}

namespace {

/// The writer and the conversion, with the sample as their own; a conversion has no string.
template <class Layout> struct sample_writer {
    const char *name;
    dump_outcome (*write)(const std::string &path, int mode, int fd, std::string *text);
};
template <class Layout>
constexpr sample_writer<Layout> sample_writers[] = {
    {"writer",
     [](const std::string &path, int mode, int fd, std::string *text) {
         sample_dictionary<Layout> list;
         return dump_dictionary<Layout>(&list.entries, &path, mode, fd, text);
     }},
    {"conversion",
     [](const std::string &path, int mode, int fd, std::string *) {
         return convert_dictionary<Layout>(sample_document, &path, mode, fd);
     }},
};

template <class Layout> void expect_failed_open(const std::string &path, int error) {
    for (const auto &writer : sample_writers<Layout>)
        for (int mode : all_dictionary_modes) {
            SCOPED_TRACE(path.substr(0, 100) + ", " + writer.name + ", mode " + std::to_string(mode));
            const memory_file target;
            std::string text = "before";
            const std::size_t opened = open_descriptors();
            const dump_outcome seen = writer.write(path, mode, target.fd(), &text);
            EXPECT_EQ(seen.result, 1);
            EXPECT_EQ(seen.streams.out,
                      std::string(Layout::function) + " failed to open file: '" + path + "'\n");
            EXPECT_EQ(seen.streams.err, std::string("fopen: ") + strerror(error) + "\n");
            EXPECT_EQ(target.text(), "");
            EXPECT_EQ(text, "before");
            EXPECT_EQ(open_descriptors(), opened);
        }
}

} // namespace

TYPED_TEST(EnvIndexDictionaryWriterDestinations, AFileThatCannotBeOpenedEndsTheCallBeforeAnythingIsWritten) {
    const temporary_folder folder;
    const std::pair<std::string, int> cases[] = {{folder / "missing/out.xml", ENOENT},
                                                 {folder.path(), EISDIR},
                                                 {std::string(5000, 'x'), ENAMETOOLONG}};
    for (const auto &[path, error] : cases)
        expect_failed_open<TypeParam>(path, error);
}

TYPED_TEST(EnvIndexDictionaryWriterDestinations, AFolderThatMayOnlyBeReadGetsNoFile) {
    const read_only_folder folder;
    EXPECT_TRUE(holds_without_root([&] { expect_failed_open<TypeParam>(folder / "out.xml", EACCES); }));
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

TYPED_TEST(EnvIndexDictionaryWriterDestinations, TheReasonIsToldRightEvenWhenStandardOutputIsFull) {
    const temporary_folder folder;
    const std::string missing = folder / "missing/out.xml";
    sample_dictionary<TypeParam> list;
    const captured seen = capture([&] {
        const int full = open("/dev/full", O_WRONLY | O_CLOEXEC);
        dup2(full, STDOUT_FILENO);
        close(full);
        std::string path = missing;
        EXPECT_EQ(TypeParam::dump(&list.entries, path.data(), xml_to_file_and_fd, -1, nullptr), 1);
        __fpurge(stdout); // what could not be written
        clearerr(stdout);
        std::cout.clear();
    });
    EXPECT_EQ(seen.err, "fopen: No such file or directory\n");
}

// A full device shows only when the file is flushed or closed; that is not reported, and what comes after
// goes on.
TYPED_TEST(EnvIndexDictionaryWriterDestinations, AFullFileIsNotReported) {
    const std::string full = "/dev/full";
    for (int mode : all_dictionary_modes)
        for (int entries : {1, 2000}) { // within the stream's buffer and far beyond it
            SCOPED_TRACE("mode " + std::to_string(mode) + ", entries " + std::to_string(entries));
            dictionary<TypeParam> list;
            add_many(list, entries);
            const memory_file target;
            const std::size_t opened = open_descriptors();
            const dump_outcome seen =
                dump_dictionary<TypeParam>(&list.entries, &full, mode, target.fd(), nullptr);
            EXPECT_EQ(seen.result, 0);
            EXPECT_EQ(seen.streams.out, created_line<TypeParam>(full) + closed_line<TypeParam>(full));
            EXPECT_EQ(seen.streams.err, "");
            EXPECT_EQ(target.text().empty(), mode != xml_to_file_and_fd);
            EXPECT_EQ(open_descriptors(), opened);
        }
}

namespace {

/// A failed write to `fd`: the file is complete and closed, though that is not said.
template <class Layout> void expect_failed_write(int fd, int entries) {
    SCOPED_TRACE("fd " + std::to_string(fd) + ", entries " + std::to_string(entries));
    dictionary<Layout> list;
    add_many(list, entries);
    const std::string since = local_date();
    const std::string document = without_dictionary_date(dictionary_xml<Layout>(&list.entries), since);
    const temporary_file file("old content");
    std::string text = "before";
    const std::size_t opened = open_descriptors();

    const dump_outcome seen =
        dump_dictionary<Layout>(&list.entries, &file.path(), xml_to_file_and_fd, fd, &text);

    EXPECT_EQ(seen.result, 2);
    EXPECT_EQ(seen.streams.out, created_line<Layout>(file.path()) + Layout::write_failed_line);
    EXPECT_EQ(seen.streams.err, "");
    EXPECT_EQ(text, "before");
    EXPECT_TRUE(without_dictionary_date(file.text(), since) == document);
    EXPECT_EQ(open_descriptors(), opened);

    const dump_outcome without_file =
        dump_dictionary<Layout>(&list.entries, nullptr, xml_to_file_and_fd, fd, nullptr);
    EXPECT_EQ(without_file.result, 2);
    EXPECT_EQ(without_file.streams.out, Layout::write_failed_line);
    EXPECT_EQ(without_file.streams.err, "");
    EXPECT_EQ(open_descriptors(), opened);
}

} // namespace

TYPED_TEST(EnvIndexDictionaryWriterDestinations, AFailedWriteIsReportedAndLeavesTheFileComplete) {
    const int full = open("/dev/full", O_WRONLY | O_CLOEXEC),
              unwritable = open("/dev/null", O_RDONLY | O_CLOEXEC);
    ASSERT_GE(full, 0);
    ASSERT_GE(unwritable, 0);
    for (int entries : {0, 1, 1000})
        for (int fd : {full, unwritable, closed_descriptor(), -2, INT_MAX, INT_MIN})
            expect_failed_write<TypeParam>(fd, entries);
    close(full);
    close(unwritable);
}

// Only mode 2 writes to the descriptor; for the others it only counts as a destination.
TYPED_TEST(EnvIndexDictionaryWriterDestinations, ABadDescriptorDoesNotMatterToTheOtherModes) {
    for (int mode : all_dictionary_modes) {
        if (mode == xml_to_file_and_fd)
            continue;
        sample_dictionary<TypeParam> list;
        const temporary_file file;
        const dump_outcome seen =
            dump_dictionary<TypeParam>(&list.entries, &file.path(), mode, closed_descriptor(), nullptr);
        EXPECT_EQ(seen.result, 0) << mode;
        EXPECT_EQ(seen.streams.out,
                  created_line<TypeParam>(file.path()) + closed_line<TypeParam>(file.path()));
        EXPECT_EQ(file.text(), mode == text_lines ? sample_lines : "") << mode;
    }
}

TYPED_TEST(EnvIndexDictionaryWriterDestinations, ADescriptorGetsTheDocumentInOneWriteAndStaysOpen) {
    dictionary<TypeParam> list;
    add_many(list, 300);
    int ends[2];
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends), 0); // keeps writes apart
    const std::string since = local_date(), document = dictionary_xml<TypeParam>(&list.entries);
    EXPECT_EQ(dump_dictionary<TypeParam>(&list.entries, nullptr, xml_to_file_and_fd, ends[0], nullptr).result,
              0);
    std::string packet(2 * document.size(), '\0');
    const ssize_t got = recv(ends[1], packet.data(), packet.size(), MSG_DONTWAIT);
    ASSERT_EQ(got, static_cast<ssize_t>(document.size()));
    packet.resize(document.size());
    EXPECT_TRUE(without_dictionary_date(packet, since) == without_dictionary_date(document, since));
    EXPECT_EQ(recv(ends[1], packet.data(), packet.size(), MSG_DONTWAIT), -1);
    EXPECT_GE(fcntl(ends[0], F_GETFD), 0);
    close(ends[0]);
    close(ends[1]);
}

TYPED_TEST(EnvIndexDictionaryWriterDestinations, AShortWriteIsNotNoticed) {
    dictionary<TypeParam> list;
    add_many(list, 1000);
    int ends[2];
    ASSERT_EQ(pipe2(ends, O_NONBLOCK | O_CLOEXEC), 0);
    const auto capacity = static_cast<std::size_t>(fcntl(ends[1], F_GETPIPE_SZ));
    ASSERT_LT(capacity, dictionary_xml<TypeParam>(&list.entries).size());
    const temporary_file file;
    const dump_outcome seen =
        dump_dictionary<TypeParam>(&list.entries, &file.path(), xml_to_file_and_fd, ends[1], nullptr);
    EXPECT_EQ(seen.result, 0);
    EXPECT_EQ(seen.streams.out, created_line<TypeParam>(file.path()) + closed_line<TypeParam>(file.path()));
    const std::string document = file.text();
    std::string received(document.size(), '\0');
    EXPECT_EQ(read(ends[0], received.data(), received.size()), static_cast<ssize_t>(capacity));
    EXPECT_EQ(document.compare(0, capacity, received, 0, capacity), 0);
    close(ends[0]);
    close(ends[1]);
}
