/// The companion header: owning lists, their four ways to read, looking up, writing and releasing.

#include <ZEB5XML/zeb5xml.hpp>

#include <algorithm>
#include <csignal>
#include <numeric>
#include <type_traits>

#include <sys/resource.h>

#include <gtest/gtest.h>

#include "support/capture.h"
#include "support/sanitized.h"
#include "support/test_files.h"

namespace {

using namespace zeb5xml;

const char two_channels[] = "<CHANDESCRIPTIONS>\n"
                            "<CHANNEL><STREAM>1</STREAM><PROP>A/B/C</PROP><NAME>CH.C</NAME>"
                            "<BIT>3<BIT_NAME>on</BIT_NAME></BIT></CHANNEL>\n"
                            "<CHANNEL><EVTYPE>16</EVTYPE><PROP>A/B/D</PROP><NAME>CH.D</NAME></CHANNEL>\n"
                            "</CHANDESCRIPTIONS>\n";
const char broken[] = "<CHANDESCRIPTIONS><CHANNEL><PROP>A/B/C</PROP></CHANNEL></CHANDESCRIPTION>";
const char message_of_broken[] = "expected end of tag 'CHANDESCRIPTIONS'";
const char event_document[] =
    "<BMR><EVENT><TYPE>4</TYPE><SBLOCK>SRV</SBLOCK></EVENT>"
    "<EVENT><TYPE>1</TYPE><SBLOCK>S2</SBLOCK><CHLIST><CHAN>c</CHAN></CHLIST></EVENT>"
    "<EVENT><TYPE>2</TYPE></EVENT></BMR>";
const char dictionary_document[] =
    "<ENVINDEXDICT><CHANNEL><INDEX>7</INDEX><PROP>A/B/C</PROP><DABS>0.5</DABS></CHANNEL>"
    "<CHANNEL><INDEX>9</INDEX><PROP>A/B/D</PROP><PROP>A/B/E</PROP></CHANNEL></ENVINDEXDICT>";
const char camera_document[] =
    "<C><Integer Name='Width'><ToolTip>wide</ToolTip></Integer><Float Name='Gain'/></C>";

template <class List> std::vector<std::string> properties(const List &list) {
    std::vector<std::string> all;
    for (const auto &channel : list)
        all.push_back(channel.prop_name);
    return all;
}

/// The document without its line with the date, as it is where that differs from call to call.
std::string without_date(std::string document) {
    const std::size_t begin = document.find("\t<isodate>");
    return begin == std::string::npos ? document
                                      : document.erase(begin, document.find('\n', begin) + 1 - begin);
}

using texts = std::vector<std::string>;

// What the types promise

static_assert(std::is_nothrow_move_constructible_v<channel_list> &&
              std::is_nothrow_move_assignable_v<channel_list>);
static_assert(!std::is_copy_constructible_v<channel_list> && !std::is_copy_assignable_v<event_list>);
static_assert(
    std::is_same_v<decltype(*std::declval<const channel_list &>().begin()), const chan_descr_2010 &>);
static_assert(
    std::is_same_v<decltype(std::declval<const channel_list &>().find("")), const chan_descr_2010 *>);
static_assert(std::is_convertible_v<channel_list::iterator, channel_list::const_iterator>);
static_assert(!std::is_convertible_v<channel_list::const_iterator, channel_list::iterator>);
static_assert(std::is_move_constructible_v<selector> && !std::is_copy_constructible_v<selector>);

// Reading

TEST(Zeb5xmlHpp, ReadsAFile) {
    const temporary_file file(two_channels);
    EXPECT_EQ(properties(channel_list::read(file.path())), (texts{"A/B/C", "A/B/D"}));
}

TEST(Zeb5xmlHpp, ParsesEveryKindOfText) {
    const std::string whole = two_channels;
    EXPECT_EQ(properties(channel_list::parse(two_channels)), (texts{"A/B/C", "A/B/D"}));
    EXPECT_EQ(properties(channel_list::parse(whole)), (texts{"A/B/C", "A/B/D"}));
    const std::string longer = whole + "<garbage";
    EXPECT_EQ(properties(channel_list::parse(std::string_view(longer).substr(0, whole.size()))),
              (texts{"A/B/C", "A/B/D"}));
}

TEST(Zeb5xmlHpp, ReadsAsAskedFor) {
    const std::string numbers = "<CHANDESCRIPTIONS><CHANNEL><EVTYPE>4</EVTYPE><PROP>P</PROP></CHANNEL>"
                                "<CHANNEL><PROP>P</PROP></CHANNEL></CHANDESCRIPTIONS>";
    channel_reading how;
    EXPECT_EQ(channel_list::parse(numbers, how).size(), 1u);
    EXPECT_EQ(channel_list::parse(numbers, how)[0].ev_type, 4u);
    how.shift = true;
    how.merge_duplicates = false;
    EXPECT_EQ(channel_list::parse(numbers, how).size(), 2u);
    EXPECT_EQ(channel_list::parse(numbers, how)[0].ev_type, 16u);
    const temporary_file file(numbers);
    EXPECT_EQ(channel_list::read(file.path(), how).size(), 2u);
    EXPECT_EQ(channel_list::read(file.path(), how)[0].ev_type, 16u);
}

TEST(Zeb5xmlHpp, ThrowsWhatTheReaderReports) {
    const temporary_file file(broken);
    const captured seen = capture([&] {
        try {
            channel_list::read(file.path());
            ADD_FAILURE();
        } catch (const error &problem) {
            EXPECT_EQ(problem.code(), 1);
            EXPECT_EQ(problem.what(), file.path() + ": not read without problems, result 1");
        }
        EXPECT_THROW(channel_list::parse(broken), error);
        EXPECT_THROW(channel_list::read("/nowhere.xml"), error);
        EXPECT_THROW(event_list::parse(broken), error);
        EXPECT_THROW(env_dictionary::parse(broken), error);
        EXPECT_THROW(env_dictionary_classic::parse(broken), error);
        EXPECT_THROW(camera_features::parse(broken), error);
    });
    EXPECT_NE(seen.err.find(message_of_broken), std::string::npos);
}

TEST(Zeb5xmlHpp, ReturnsAnOutcomeOnRequest) {
    outcome<channel_list> result;
    const captured seen = capture([&] { result = channel_list::try_parse(broken); });
    EXPECT_EQ(seen.out + seen.err, "");
    EXPECT_FALSE(result);
    EXPECT_EQ(result.code, 1);
    EXPECT_NE(result.printed.find(message_of_broken), std::string::npos);
    EXPECT_EQ(properties(result.list), (texts{"A/B/C"}));

    const temporary_file file(two_channels);
    result = channel_list::try_read(file.path());
    EXPECT_TRUE(result);
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.printed, "");
    EXPECT_EQ(result.list.size(), 2u);
}

/// Runs code with no open standard stream; returns whether they were closed still when it was over.
template <class Code> bool stay_closed(Code &&code) {
    int originals[3];
    for (int i : {0, 1, 2}) {
        originals[i] = fcntl(i, F_DUPFD, 3);
        close(i);
    }
    code();
    bool are_closed = true;
    for (int i : {0, 1, 2}) {
        are_closed &= fcntl(i, F_GETFD) == -1;
        dup2(originals[i], i);
        close(originals[i]);
    }
    return are_closed;
}

TEST(Zeb5xmlHpp, ReturnsAnOutcomeWithClosedStreams) {
    outcome<channel_list> result;
    EXPECT_TRUE(stay_closed([&] { result = channel_list::try_parse(broken); }));
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.list.size(), 1u);
    EXPECT_EQ(result.printed, ""); // there was no stream to print to
}

TEST(Zeb5xmlHpp, ThrowsWhenThereIsNoDescriptorForItsOutcome) {
    if (is_sanitized)
        GTEST_SKIP()
            << "the sanitizer of undefined behaviour takes memory for invalid when it has no descriptor";
    rlimit before;
    getrlimit(RLIMIT_NOFILE, &before);
    const int first_free = dup(0);
    close(first_free);
    const rlimit low{static_cast<rlim_t>(first_free) + 1, before.rlim_max}; // one descriptor is left
    setrlimit(RLIMIT_NOFILE, &low);
    std::error_code problem;
    try {
        channel_list::try_parse(broken);
    } catch (const std::system_error &thrown) {
        problem = thrown.code();
    }
    setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_EQ(problem, std::errc::too_many_files_open);
    EXPECT_EQ(capture([] { std::cout << "still here" << std::endl; }).out, "still here\n");
}

TEST(Zeb5xmlHpp, AddsToAList) {
    channel_list list = channel_list::parse(two_channels);
    EXPECT_EQ(list.add_text("<CHANDESCRIPTIONS><CHANNEL><PROP>A/B/E</PROP></CHANNEL></CHANDESCRIPTIONS>"), 0);
    EXPECT_EQ(properties(list), (texts{"A/B/C", "A/B/D", "A/B/E"}));
}

// Ranges and ownership

TEST(Zeb5xmlHpp, IsARangeOfRecords) {
    channel_list list = channel_list::parse(two_channels);
    EXPECT_EQ(list.end() - list.begin(), 2);
    EXPECT_EQ(&list.begin()[1], &list[1]);
    EXPECT_EQ(&*(1 + list.begin()), &list[1]);
    EXPECT_EQ(&*(list.end() - 1), &list[1]);
    EXPECT_LT(list.begin(), list.end());
    EXPECT_EQ(
        std::accumulate(list.begin(), list.end(), 0, [](int sum, const auto &c) { return sum + c.stream; }),
        1);
    for (chan_descr_2010 &channel : list)
        channel.stream = 6;
    EXPECT_TRUE(
        std::all_of(list.begin(), list.end(), [](const auto &channel) { return channel.stream == 6; }));
    const auto last =
        std::find_if(std::make_reverse_iterator(list.end()), std::make_reverse_iterator(list.begin()),
                     [](const auto &channel) { return channel.stream == 6; });
    EXPECT_EQ(&*last, &list[1]);
    channel_list::const_iterator place = list.begin();
    EXPECT_EQ(place++->prop_name, list[0].prop_name);
    EXPECT_EQ((place--)->prop_name, list[1].prop_name);
    EXPECT_EQ(place, list.begin());
}

TEST(Zeb5xmlHpp, OwnsItsRecords) {
    channel_list first = channel_list::parse(two_channels);
    const chan_descr_2010 *const record = &first[0];
    channel_list second = std::move(first);
    EXPECT_EQ(&second[0], record);
    EXPECT_TRUE(first.empty()); // NOLINT: this is what the test asks
    channel_list third = channel_list::parse(two_channels);
    third = std::move(second);
    EXPECT_EQ(&third[0], record);
    channel_list::plain_list plain = third.release();
    EXPECT_TRUE(third.empty());
    EXPECT_EQ(plain[0], record);
    const channel_list fourth(std::move(plain));
    EXPECT_TRUE(plain.empty()); // NOLINT
    EXPECT_EQ(fourth.size(), 2u);
    channel_list empty;
    EXPECT_EQ(empty.begin(), empty.end());
    third.clear();
    EXPECT_EQ(third.size(), 0u);
}

// Channels

TEST(Zeb5xmlHpp, FindsAndCompletesChannels) {
    channel_list list = channel_list::parse(two_channels);
    const channel_list &same = list;
    EXPECT_EQ(same.find("A/B/D"), &same[1]);
    EXPECT_EQ(list.find(std::string("A/B/C")), &list[0]);
    EXPECT_EQ(list.find("A/B"), nullptr);
    const channel_list other = channel_list::parse(
        "<CHANDESCRIPTIONS><CHANNEL><PROP>A/B/C</PROP><UNITS>V</UNITS></CHANNEL></CHANDESCRIPTIONS>");
    EXPECT_TRUE(complete(list[0], other[0]));
    EXPECT_STREQ(list[0].units, "V");
    EXPECT_FALSE(complete(list[1], other[0]));
}

TEST(Zeb5xmlHpp, WritesChannelsInEachForm) {
    channel_list list = channel_list::parse(two_channels);
    for (const auto &[format, mode, dialect] :
         {std::tuple(channel_format::chandescriptions, 2, 0), std::tuple(channel_format::daqvariables, 2, 1),
          std::tuple(channel_format::table, 1, 0), std::tuple(channel_format::summary, 3, 0)}) {
        temporary_file expected;
        dump_chan_desr(&list.plain(), expected.c_path(), mode, dialect, -1, nullptr, nullptr);
        EXPECT_NE(expected.text(), "");
        EXPECT_EQ(list.text(format), without_date(expected.text()));
        temporary_file file("what stood there before");
        list.write(file.path(), format);
        EXPECT_EQ(without_date(file.text()), without_date(expected.text()));
        EXPECT_EQ(file.text().size(), expected.text().size());
    }
    EXPECT_EQ(list.text(), list.text(channel_format::chandescriptions));
    EXPECT_EQ(properties(channel_list::parse(list.text())), properties(list));
}

/// The reason for which a list is not written to a path; "" when it is.
std::string problem_of_writing(const channel_list &list, const std::string &path) {
    try {
        list.write(path);
        return "";
    } catch (const error &problem) {
        EXPECT_EQ(problem.code(), 1);
        return problem.what();
    }
}

TEST(Zeb5xmlHpp, LeavesAFileThatCannotBeReplaced) {
    const channel_list list = channel_list::parse(two_channels);
    EXPECT_EQ(problem_of_writing(list, "/nowhere/channels.xml"),
              "/nowhere/channels.xml: could not be written: No such file or directory");
    const temporary_folder folder;
    EXPECT_EQ(problem_of_writing(list, folder.path()),
              folder.path() + ": could not be written: Is a directory");
    EXPECT_EQ(problem_of_writing(list, "/dev/full"),
              "/dev/full: could not be written: No space left on device");
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
}

TEST(Zeb5xmlHpp, LeavesLinksPermissionsAndOtherFilesAsTheyAre) {
    const channel_list list = channel_list::parse(two_channels);
    const temporary_folder folder;
    const std::string file = folder.path() + "/file", link = folder.path() + "/link", other = file + ".new0";
    std::ofstream(file) << "old";
    std::ofstream(other) << "mine";
    std::filesystem::create_symlink("file", link);
    std::filesystem::permissions(file, std::filesystem::perms(0640));
    EXPECT_EQ(problem_of_writing(list, link), "");
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_EQ(std::filesystem::status(file).permissions(), std::filesystem::perms(0640));
    EXPECT_EQ(properties(channel_list::read(file)), properties(list));
    EXPECT_EQ(file_text(other), "mine");
    std::filesystem::remove(file);
    EXPECT_EQ(problem_of_writing(list, link), ""); // it leads to a file that is still to be created
    EXPECT_EQ(properties(channel_list::read(file)), properties(list));
    const auto entries = std::filesystem::directory_iterator(folder.path());
    EXPECT_EQ(std::distance(begin(entries), end(entries)), 3);
}

TEST(Zeb5xmlHpp, WritesTheSameWithClosedStreams) {
    const channel_list list = channel_list::parse(
        "<CHANDESCRIPTIONS><CHANNEL><DTYPE>64</DTYPE><PROP>A/B/C</PROP></CHANNEL></CHANDESCRIPTIONS>");
    const env_dictionary entries = env_dictionary::parse(dictionary_document);
    std::string summary, table;
    const captured seen = capture([&] { summary = list.text(channel_format::summary); });
    EXPECT_EQ(seen.out + seen.err, "");
    EXPECT_TRUE(stay_closed([&] {
        EXPECT_EQ(list.text(channel_format::summary), summary);
        table = entries.text(dictionary_format::table);
    }));
    EXPECT_EQ(table, entries.text(dictionary_format::table));
}

/// Runs code in which no file may become longer than 4 KB; returns the problem that it throws, "" without
/// one.
template <class Code> std::string problem_of_long_files(Code &&code) {
    rlimit before;
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit low{4096, before.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &low);
    std::string problem;
    try {
        code();
    } catch (const std::exception &thrown) {
        problem = thrown.what();
    }
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    return problem;
}

TEST(Zeb5xmlHpp, LeavesTheOldFileWhenTheNewOneBecomesTooLong) {
    std::string properties;
    for (int i = 0; i < 100; ++i)
        properties += "<CHANNEL><INDEX>1</INDEX><PROP>A/B/" + std::to_string(i) + "</PROP></CHANNEL>";
    const auto list = channel_list::parse("<CHANDESCRIPTIONS>" + properties + "</CHANDESCRIPTIONS>");
    const auto entries = env_dictionary::parse("<ENVINDEXDICT>" + properties + "</ENVINDEXDICT>");
    const temporary_folder folder;
    const std::string file = folder.path() + "/file";
    std::ofstream(file) << "old";
    EXPECT_EQ(problem_of_long_files([&] { list.write(file); }), "file in memory: File too large");
    EXPECT_EQ(problem_of_long_files([&] { entries.write(file); }),
              file + ": could not be written: File too large");
    EXPECT_EQ(file_text(file), "old");
    const auto files = std::filesystem::directory_iterator(folder.path());
    EXPECT_EQ(std::distance(begin(files), end(files)), 1);
}

TEST(Zeb5xmlHpp, PrintsAsThePlainFunctions) {
    channel_list list = channel_list::parse(two_channels);
    const captured plain = capture([&] { print_zeb5_chan_descr(&list.plain()); });
    EXPECT_EQ(capture([&] { list.print(); }).out, plain.out);
    channel_list::plain_list one{&list[0]};
    const captured first = capture([&] { print_zeb5_chan_descr(&one); });
    EXPECT_EQ(capture([&] { print(list[0]); }).out, first.out);
}

// The other kinds

TEST(Zeb5xmlHpp, ReadsEventLists) {
    const temporary_file file(event_document);
    const event_list list = event_list::read(file.path());
    ASSERT_EQ(list.size(), 3u);
    EXPECT_STREQ((*list[0].sb_list)[0]->sb_list, "SRV");
    EXPECT_EQ(list.find(static_cast<ZEB5_EVTYPE>(1)), &list[1]);
    EXPECT_EQ(list.find(static_cast<ZEB5_EVTYPE>(5)), nullptr);
    EXPECT_EQ(event_list::parse(event_document).size(), 3u);
    EXPECT_EQ(capture([&] { list.print(); }).out, capture([&] { zeb5_print_ev_list(&list.plain()); }).out);
}

template <class Dictionary> class Zeb5xmlHppDictionary : public testing::Test {};
using layouts = testing::Types<env_dictionary, env_dictionary_classic>;
TYPED_TEST_SUITE(Zeb5xmlHppDictionary, layouts, );

void print_plainly(env_dictionary::plain_list list) {
    dump_env_index_dict_2010(&list, nullptr, 0, -1, nullptr);
}
void print_plainly(env_dictionary_classic::plain_list list) {
    dump_env_index_dict(&list, nullptr, 0, -1, nullptr);
}

TYPED_TEST(Zeb5xmlHppDictionary, IsReadAndWritten) {
    const temporary_file file(dictionary_document);
    const TypeParam list = TypeParam::read(file.path());
    ASSERT_EQ(list.size(), 3u); // the second PROP of a CHANNEL appends its entry once more
    EXPECT_EQ(&list[1], &list[2]);
    EXPECT_EQ(list.find(7), &list[0]);
    EXPECT_EQ(list.find(8), nullptr);
    std::string text;
    const captured seen = capture([&] { text = list.text(dictionary_format::table); });
    EXPECT_EQ(seen.out + seen.err, "");
    EXPECT_EQ(text,
              "7\tA/B/C\t0.500000\t0.000000\n9\tA/B/E\t0.000000\t0.000000\n9\tA/B/E\t0.000000\t0.000000\n");
    EXPECT_EQ(TypeParam::parse(list.text()).text(dictionary_format::table), text);
    const temporary_file written;
    const captured silent = capture([&] { list.write(written.path()); });
    EXPECT_EQ(silent.out + silent.err, "");
    EXPECT_EQ(without_date(written.text()), without_date(list.text()));
    EXPECT_EQ(written.text().size(), list.text().size());
    list.write(written.path(), dictionary_format::table);
    EXPECT_EQ(written.text(), text);
    EXPECT_EQ(capture([&] { list.print(); }).out, capture([&] { print_plainly(list.plain()); }).out);
}

TEST(Zeb5xmlHpp, ReadsCameraFiles) {
    const temporary_file file(camera_document);
    camera_features list = camera_features::read(file.path());
    ASSERT_EQ(list.size(), 2u);
    EXPECT_EQ(list.find("Width")->tooltip, "wide");
    EXPECT_EQ(list.find("Height"), nullptr);
    EXPECT_EQ(camera_features::parse(camera_document).size(), 2u);
    EXPECT_EQ(camera_features::try_parse(static_cast<const char *>(nullptr)).code, 1);
    EXPECT_EQ(list.add_text(camera_document), 0);
    EXPECT_EQ(list.size(), 4u);
    EXPECT_EQ(capture([&] { list.print(); }).out, capture([&] { zeb5_dump_gige_descr(&list.plain()); }).out);
}

TEST(Zeb5xmlHpp, AnswersQuestionsAboutChannels) {
    const temporary_file file(two_channels);
    selector channels;
    channels.add(file.path());
    channels.add_text(
        "<CHANDESCRIPTIONS><CHANNEL><EVTYPE>1</EVTYPE><DTYPE>9</DTYPE><PROP>P</PROP><NAME>N.ML</NAME>"
        "<DIM>1</DIM><DIM>2</DIM></CHANNEL></CHANDESCRIPTIONS>");
    ASSERT_EQ(channels.size(), 3);
    EXPECT_STREQ(channels.name(2), "N.ML");
    EXPECT_STREQ(channels.property(1), "A/B/D");
    EXPECT_EQ(channels.name(3), nullptr);
    EXPECT_EQ(channels.data_type("N.ML"), 9u);
    EXPECT_TRUE(channels.has_channel(ZEB5_EV_ENV, "A/B/D"));
    EXPECT_EQ(channels.is_slow(1), true);
    EXPECT_EQ(channels.is_ml(2), true);
    EXPECT_EQ(channels.subchannels(1), 1);
    capture([&] {
        EXPECT_EQ(channels.event_types("nobody"), 0u);
        EXPECT_EQ(channels.is_slow(0), std::nullopt);
        EXPECT_THROW(channels.add_text(broken), error);
    });
    EXPECT_EQ(channels.plain().size(), 3);
    selector moved = std::move(channels);
    EXPECT_EQ(moved.size(), 3);
}

} // namespace
