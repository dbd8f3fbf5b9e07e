/// Each call of the library, with memory that runs out at its first allocation, at its second and so on,
/// until the call succeeds. The call must report it by its result or an exception. All records of the list
/// can be used and released, nothing is lost, and the next call works as usual.

#include <filesystem>
#include <functional>
#include <set>

#include <gtest/gtest.h>

#include "attr_tags_functions.h"
#include "support/env_dictionary_readers.h"
#include "support/every_reader.h"
#include "support/failing_everywhere.h"
#include "support/lane.h"
#include "support/sanitized.h"

namespace {

using namespace failing_memory;

/// Arms the memory around every call of the library.
class MemoryFaults : public testing::Test {
protected:
    MemoryFaults() {
        before_library_call = arm;
        after_library_call = disarm;
    }
    ~MemoryFaults() override { before_library_call = after_library_call = nullptr; }

    counted_platform platform;
};

const mode both_modes[] = {ONCE, FROM_THEN_ON};
const char *name_of(mode how) { return how == ONCE ? ", once" : ", for good"; }

constexpr int write_modes[] = {1, 2, 3}; // tables and documents, in the order of the writers
constexpr int both_formats[] = {0, 1};   // of the channel writer
constexpr int no_fd = -1;
constexpr std::vector<dim_params *> *no_axes = nullptr;

std::string case_name(int write_mode, int format) {
    return "mode " + std::to_string(write_mode) + ", format " + std::to_string(format);
}

TEST_F(MemoryFaults, LeaveEveryReaderAsItWas) {
    for (const reader_row &reader : every_reader)
        for (const bool is_good : {true, false})
            for (const mode how : both_modes)
                for (const reading_way way : both_ways) {
                    SCOPED_TRACE(std::string(reader.name) + (is_good ? ", " : ", cut, ") + way_name(way) +
                                 name_of(how));
                    const way_in_use used(way);
                    reader_source source(reader,
                                         is_good ? good_documents[reader.kind] : bad_document(reader.kind));
                    const tally seen =
                        fail_everywhere(platform.of_xml, how, [&] { return reader.read(source.get()); });
                    EXPECT_GT(seen.calls, way == WITH_LANE ? 5u : 100u); // the scanner takes little memory
                    EXPECT_EQ(seen.problems, "");
                }
}

TEST_F(MemoryFaults, FailTheReadingOfAPlainCameraFile) {
    temporary_file file(
        "<r><Integer Name='a name longer than any short string'><ToolTip>t</ToolTip></Integer></r>");
    for (const mode how : both_modes) {
        const tally seen = fail_everywhere(platform.of_xml, how, [&] { return read_camera(file.c_path()); });
        EXPECT_EQ(seen.ends, std::set<std::string>{"result 1"}) << name_of(how);
        EXPECT_EQ(seen.problems, "");
    }
}

TEST_F(MemoryFaults, FailTheReadingOfACameraFileByItsTree) {
    const way_in_use used(WITHOUT_LANE);
    temporary_file file(
        "<r><Integer Name='a name longer than any short string'><ToolTip>t</ToolTip></Integer>"
        "<Float Name='another name longer than any short string'/></r>");
    for (const mode how : both_modes) {
        tally seen = fail_everywhere(platform.of_xml, how, [&] { return read_camera(file.c_path()); });
        seen.ends.erase("result 0"); // one failure alone may do no harm, and all was read then
        EXPECT_EQ(seen.ends, std::set<std::string>{"result 1"}) << name_of(how);
        EXPECT_EQ(seen.problems, "");
    }
}

// The pull readers themselves: whoever catches the exception may ask for further steps

/// Takes all steps while memory runs out at the `at`-th allocation. Whether it did.
template <class Parser> bool run_out_while_stepping(Parser &parser, std::size_t at) {
    char never_set = '?', *tag, *value;
    bool has_thrown = false;
    prepare(at, ONCE);
    arm();
    try {
        do
            tag = value = &never_set;
        while (parser.parse(&tag, &value) == 0);
    } catch (const std::bad_alloc &) {
        has_thrown = true;
    } catch (const xercesc::OutOfMemoryException &) {
        has_thrown = true;
    }
    disarm();
    EXPECT_EQ(tag, nullptr) << at;
    EXPECT_EQ(value, nullptr) << at;
    return has_thrown;
}

template <class Source> void expect_pull_reader_to_end() {
    const std::string document = "<r name='\xc3\xa4'><a>short</a><b>" + std::string(300, 'x') +
                                 "\xc3\xb6</b><" + std::string(50, 't') + " n='" + std::string(100, 'n') +
                                 "'>y</" + std::string(50, 't') + "></r>";
    std::size_t at = 1;
    for (bool has_thrown = true; has_thrown; ++at) {
        Source source(document);
        ASSERT_EQ(source.start(), 0);
        has_thrown = run_out_while_stepping(source.parser(), at);
        EXPECT_EQ(step(source.parser()), "-1") << at;
        EXPECT_EQ(step(source.parser()), "-1") << at;
        char name[] = "name", *value = name;
        if (source.parser().get_attr(name, &value) == 0) // nothing has dropped it so far
            EXPECT_STREQ(value, "\xc3\xa4") << at;
        else
            EXPECT_EQ(value, nullptr) << at;
    }
    EXPECT_GT(at, 10u);
}

TEST_F(MemoryFaults, EndTheDocumentOfAPullReader) {
    expect_pull_reader_to_end<memory_source>();
    expect_pull_reader_to_end<file_source>();
}

// Writers and conversions

/// One call that writes, in all that may differ; `fd` is -1 or takes everything, `out` is a string that it
/// may write to.
using writing = std::function<int(char *path, int fd, std::string *out)>;

/// How much a call wrote, as the dates go on: to its file, its descriptor and its string.
std::string written_sizes(const std::string &path, off_t to_descriptor, const std::string &out) {
    std::error_code not_there;
    const auto in_file = std::filesystem::file_size(path, not_there);
    return (not_there ? "no file" : std::to_string(in_file)) + ' ' + std::to_string(to_descriptor) + ' ' +
           std::to_string(out.size());
}

/// What a call wrote is not looked at after it failed: a file may be cut off anywhere. The file is a new one
/// each time, as it costs a disk access to replace what stands in one.
void expect_writer_recovers(xml_memory &of_xml, const std::string &name, const writing &write) {
    const temporary_folder folder;
    std::string path = folder / "out.xml";
    const memory_file target;
    const struct {
        const char *name;
        int fd;
        const char *before; // in the string: an empty one is not appended to but replaced
    } rows[] = {{"", no_fd, ""}, {", to a descriptor", target.fd(), "before"}};
    for (const auto &row : rows)
        for (const mode how : both_modes) {
            SCOPED_TRACE(name + row.name + name_of(how));
            const tally seen = fail_everywhere(of_xml, how, [&] {
                reading outcome;
                std::string out = row.before;
                const off_t begin = lseek(target.fd(), 0, SEEK_CUR);
                call_library(outcome, [&] { return write(path.data(), row.fd, &out); });
                if (!*outcome.thrown)
                    outcome.records = written_sizes(path, lseek(target.fd(), 0, SEEK_CUR) - begin, out);
                unlink(path.c_str());
                return outcome;
            });
            EXPECT_TRUE(is_sanitized || seen.calls > 0); // a stream's memory does not fail under a sanitizer
            EXPECT_EQ(seen.problems, "");
        }
}

/// Axes for the channels of the good document: one has dimensions of its own, the other has none.
struct sample_axes {
    zeb5_spect_header_2010 spectra[2] = {};
    zeb5_image_ext_frame_head images[2] = {};
    char names[2][8] = {"N.1", "N.2q"};
    dim_params entries[2] = {{names[0], 2, spectra, images}, {names[1], 2, spectra, images}};
    std::vector<dim_params *> pointers{&entries[0], &entries[1]};
};

TEST_F(MemoryFaults, LeaveTheChannelWriterAndItsListAsTheyWere) {
    channel_list list;
    std::string text = good_documents[CHANNELS];
    ASSERT_EQ(parse_descr_list_read(text.data(), &list.records, true, true), 0);
    const std::string before = describe(list.records);
    sample_axes axes;
    for (const int write_mode : write_modes)
        for (const int format : both_formats)
            for (std::vector<dim_params *> *dims : {no_axes, &axes.pointers})
                expect_writer_recovers(
                    platform.of_xml, case_name(write_mode, format) + (dims ? ", axes" : ""),
                    [&](char *path, int fd, std::string *out) {
                        return dump_chan_desr(&list.records, path, write_mode, format, fd, out, dims);
                    });
    EXPECT_EQ(describe(list.records), before);
}

TEST_F(MemoryFaults, LeaveTheConversionOfChannelsAsItWas) {
    std::string text = good_documents[CHANNELS];
    for (const int write_mode : write_modes)
        for (const int format : both_formats)
            expect_writer_recovers(
                platform.of_xml, case_name(write_mode, format), [&](char *path, int fd, std::string *) {
                    return dump_chan_desr_from_xml(text.data(), path, write_mode, format, fd);
                });
}

template <class Layout> class MemoryFaultsOfDictionaries : public MemoryFaults {};
TYPED_TEST_SUITE(MemoryFaultsOfDictionaries, both_layouts);

TYPED_TEST(MemoryFaultsOfDictionaries, LeaveTheWriterAndItsListAsTheyWere) {
    dictionary<TypeParam> list;
    list.add(1, "A/B", 0.5F);
    list.add(2, "A/C");
    const std::string before = describe(list.entries);
    for (const int write_mode : write_modes)
        expect_writer_recovers(this->platform.of_xml, "mode " + std::to_string(write_mode),
                               [&](char *path, int fd, std::string *out) {
                                   return TypeParam::dump(&list.entries, path, write_mode, fd, out);
                               });
    EXPECT_EQ(describe(list.entries), before);
}

TYPED_TEST(MemoryFaultsOfDictionaries, LeaveTheConversionAsItWas) {
    std::string text = good_documents[DICTIONARY];
    for (const int write_mode : write_modes)
        expect_writer_recovers(this->platform.of_xml, "mode " + std::to_string(write_mode),
                               [&](char *path, int fd, std::string *) {
                                   return TypeParam::convert(text.data(), path, write_mode, fd);
                               });
}

// Merging

TEST_F(MemoryFaults, LeaveMergedChannelsThatCanBeUsed) {
    for (const bool force : {false, true})
        for (const mode how : both_modes) {
            SCOPED_TRACE((force ? "forced" : "not forced") + std::string(name_of(how)));
            const tally seen = fail_everywhere(platform.of_xml, how, [force] {
                channel_list both;
                chan_descr_2010 *const in = both.add(make_channel("P", "in"));
                chan_descr_2010 *const from = both.add(make_channel("P", "from"));
                add_bit(from, 1, "one");
                add_bit(from, 2, "two");
                add_dim(in, 4, "four");
                add_stat(add_dim(from, 4, "four"), 5, "five");
                add_stat(add_dim(from, 6, "six"), 7, "seven");
                reading outcome;
                call_library(outcome, [&] { return extend_channel_description(in, from, force); });
                outcome.records = describe(both.records); // and is released
                return outcome;
            });
            EXPECT_GT(seen.calls, 5u);
            EXPECT_EQ(seen.problems, "");
        }
}

// Calls that only look at records, copy one or put a tag together

void release(bit_descr *copy) { delete copy; }
void release(stat_descr *copy) { delete copy; }
void release(dim_descr *copy) {
    for (const stat_descr *stat : copy->stats)
        delete stat;
    delete copy;
}

template <class Part> reading clone(Part *(*copy_of)(const Part *), const Part *part) {
    reading seen;
    Part *copy = nullptr;
    call_library(seen, [&] {
        copy = copy_of(part);
        return 0;
    });
    if (copy) {
        seen.records = describe(*copy);
        release(copy);
    }
    return seen;
}

reading written(const std::function<void(std::string &)> &write) {
    reading seen;
    call_library(seen, [&] {
        write(seen.records);
        return 0;
    });
    return seen;
}

reading listed(const std::function<void()> &list) {
    reading seen;
    const captured streams = capture([&] {
        call_library(seen, [&] {
            list();
            return 0;
        });
    });
    seen.records = streams.out + streams.err;
    return seen;
}

struct small_call {
    const char *name;
    bool takes_memory; // else it cannot run out
    std::function<reading()> run;
};

/// A record of each kind, and names longer than a string holds without memory of its own.
struct small_calls {
    small_calls() {
        channel->ev_type = channel->dtype = 0x00FFFFFF;
        add_entry(events, 5)->tmask = 7;
        add_block(events.entries.back(), long_name, {long_name, "b"});
        features.push_back(new ZEB5GigEFeature);
        features.back()->name = features.back()->tooltip = long_name;
    }

    char long_name[48] = "a name that is longer than short strings";
    std::vector<char *> texts{long_name, long_name};
    channel_list list;
    chan_descr_2010 *const channel = list.add(make_channel(long_name));
    const bit_descr *const bit = add_bit(channel, 1, "one");
    const dim_descr *const dim = add_dim(channel, 2, "two");
    const stat_descr *const stat = add_stat(channel->dims[0], 3, "three");
    event_list events;
    feature_list features;

    using plain_writer = void (*)(std::string &, const char *);
    using attribute_writer = void (*)(std::string &, const char *, std::vector<char *> *,
                                      std::vector<char *> *);

    small_call tag(const char *name, plain_writer write) {
        return {name, true,
                [=, this] { return written([=, this](std::string &a) { write(a, long_name); }); }};
    }
    small_call tag(const char *name, attribute_writer write) {
        return {name, true, [=, this] {
                    return written([=, this](std::string &a) { write(a, long_name, &texts, &texts); });
                }};
    }

    const std::vector<small_call> rows = {
        {"clone of a bit", true, [this] { return clone(zeb5_clone_bit_descr, bit); }},
        {"clone of a statistic", true, [this] { return clone(zeb5_clone_stat_descr, stat); }},
        {"clone of a dimension", true, [this] { return clone(zeb5_clone_dim_descr, dim); }},
        tag("START_TAG", START_TAG),
        tag("START_TAGN", START_TAGN),
        tag("END_TAG", END_TAG),
        tag("END_TAGN", END_TAGN),
        tag("START_TAG_ATTR", START_TAG_ATTR),
        tag("START_TAG_ATTRN", START_TAG_ATTRN),
        tag("START_TAG_ATTRNS", START_TAG_ATTRNS),
        tag("START_TAG_ATTRNNS", START_TAG_ATTRNNS),
        {"listing of channels", true, [this] { return listed([this] { print_zeb5_chan_descr(list); }); }},
        {"listing of events", false,
         [this] { return listed([this] { zeb5_print_ev_list(&events.entries); }); }},
        {"listing of a camera", false,
         [this] { return listed([this] { zeb5_dump_gige_descr(&features); }); }},
        {"look-up in a list", false,
         [this] {
             reading seen;
             call_library(seen, [&] { return find_chan_entry(list, long_name) == channel; });
             return seen;
         }},
        {"look-up in a selector", false,
         [this] {
             reading seen;
             chan_selector selector;
             EXPECT_FALSE(add_channels(selector, {{long_name, "N", 1U << ZEB5_EV_ENV}}));
             call_library(seen, [&] { return selector.find_channel(ZEB5_EV_ENV, long_name); });
             return seen;
         }},
    };
};

TEST_F(MemoryFaults, LeaveTheRecordsThatACallLooksAtAsTheyWere) {
    const small_calls calls;
    const std::string before =
        describe(calls.list.records) + describe(calls.events.entries) + all_features(calls.features);
    for (const small_call &row : calls.rows)
        for (const mode how : both_modes) {
            SCOPED_TRACE(row.name + std::string(name_of(how)));
            const tally seen = fail_everywhere(platform.of_xml, how, row.run);
            EXPECT_EQ(seen.calls > 0, row.takes_memory);
            EXPECT_EQ(seen.problems, "");
        }
    EXPECT_EQ(describe(calls.list.records) + describe(calls.events.entries) + all_features(calls.features),
              before);
}

// A selector whose index finds no memory searches the list

TEST_F(MemoryFaults, LeaveASelectorThatFindsAllThatItHas) {
    selector_sources first(EXTR_FROM_XML, {channel_document({{"P.0", "N", 1U << ZEB5_EV_ENV}})});
    selector_sources more(EXTR_FROM_XML, {channel_document({{"P.1", "N"}, {"P.2", "N"}, {"P.3", "N"}})});
    for (const mode how : both_modes) {
        SCOPED_TRACE(name_of(how));
        unsigned sizes = 0; // a bit for each
        const tally seen = fail_everywhere(platform.of_xml, how, [&] {
            chan_selector selector;
            selector.change_mode(EXTR_FROM_XML);
            EXPECT_FALSE(selector.set_descriptions(first, nullptr));
            reading outcome, look_ups;
            call_library(outcome, [&] { return static_cast<int>(selector.set_descriptions(more, nullptr)); });
            call_library(look_ups, [&] {
                int found = 0;
                for (int i = 0; i < selector.size(); ++i)
                    found += selector.find_channel(ZEB5_EV_ENV, selector.get_prop(i));
                return found;
            });
            EXPECT_STREQ(look_ups.thrown, "");
            EXPECT_EQ(look_ups.result, selector.size());
            outcome.records = std::to_string(selector.size());
            sizes |= 1U << selector.size();
            return outcome;
        });
        EXPECT_EQ(sizes, 0b11110U); // memory ran out before, among and behind the channels
        EXPECT_EQ(seen.problems, "");
    }
}

} // namespace
