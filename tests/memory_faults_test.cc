/// What each call of the library does when memory runs out at its first allocation, at its second and so on
/// until it gets through: a result or an exception that tells of it, no list with anything in it that cannot
/// be used and released, nothing lost, and the next call as if nothing had happened.

#include <functional>
#include <set>

#include <gtest/gtest.h>

#include "env_dictionary_readers.h"
#include "every_reader.h"
#include "failing_memory.h"
#include "sanitized.h"
#include "silence.h"

namespace {

using namespace failing_memory;

/// How the calls went in which memory ran out.
struct tally {
    std::size_t calls = 0;
    std::set<std::string> ends;
    std::string problems; // numbers of the failing allocations and what was wrong then
};

/// The XML library in this process uses `of_xml`, and is up while this lives.
class counted_platform {
public:
    counted_platform() {
        xercesc::XMLPlatformUtils::Initialize(xercesc::XMLUni::fgXercescDefaultLocale, nullptr, nullptr,
                                              &of_xml);
    }
    ~counted_platform() {
        xercesc::XMLPlatformUtils::Terminate();
        EXPECT_EQ(xercesc::XMLPlatformUtils::fgMemoryManager, nullptr) << "somebody still holds the platform";
    }
    counted_platform(const counted_platform &) = delete;
    counted_platform &operator=(const counted_platform &) = delete;

    xml_memory of_xml;
};

/// What is allocated and open.
struct holdings {
    long blocks;
    long blocks_of_xml;
    int free_descriptor; // the first
};

holdings all_holdings(const xml_memory &of_xml) {
    const int descriptor = dup(STDIN_FILENO);
    close(descriptor);
    return {live_blocks(), of_xml.live_blocks(), descriptor};
}

/// Whether a call that found no memory has left anything behind. When it was in the XML library's own code
/// that memory ran out, that keeps what it made, and the file that it may have open, with its stream and
/// buffer.
bool is_left_behind(const holdings &before, const holdings &after, bool failed_in_xml) {
    const long blocks = after.blocks - before.blocks;
    if (failed_in_xml && after.free_descriptor > before.free_descriptor)
        return blocks > 2;
    return blocks != 0 || after.free_descriptor != before.free_descriptor ||
           (!failed_in_xml && after.blocks_of_xml != before.blocks_of_xml);
}

/// `run` makes one call and gives its outcome; everything of it is gone when the outcome is. `tells` says
/// whether the call must tell of what it could not do.
template <class Run> tally fail_everywhere(xml_memory &of_xml, mode how, bool tells, Run run) {
    const silence quiet;
    tally seen;
    prepare(0, ONCE);
    run();
    const auto usual = run(); // the second time, as some things are allocated once for the process
    for (std::size_t at = 1;; ++at) {
        const holdings before = all_holdings(of_xml);
        const char *thrown = "";
        int result = 0;
        bool is_silent = false;
        of_xml.prepare();
        prepare(at, how);
        {
            const auto outcome = run();
            thrown = outcome.thrown;
            result = outcome.result;
            is_silent = tells && !*thrown && result == usual.result && !(outcome == usual);
        }
        const bool is_through = !has_failed();
        prepare(0, ONCE);
        if (is_through)
            return seen;
        const bool is_lost = is_left_behind(before, all_holdings(of_xml), of_xml.has_failed());
        const bool is_other = !(run() == usual);
        ++seen.calls;
        seen.ends.insert(*thrown ? thrown : "result " + std::to_string(result));
        if (is_lost || is_silent || is_other)
            seen.problems += '#' + std::to_string(at) + (is_lost ? " leaves something;" : "") +
                             (is_silent ? " is not told;" : "") + (is_other ? " spoils the next call;" : "");
    }
}

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
constexpr int no_fd = -1;

bool is_selector(const reader_row &reader) { return std::string(reader.name).starts_with("selector"); }

TEST_F(MemoryFaults, LeaveEveryReaderAsItWas) {
    for (const reader_row &reader : every_reader)
        for (const bool is_good : {true, false})
            for (const mode how : both_modes) {
                SCOPED_TRACE(std::string(reader.name) + (is_good ? "" : ", cut") + name_of(how));
                reader_source source(reader,
                                     is_good ? good_documents[reader.kind] : bad_document(reader.kind));
                // A dictionary tells of an entry that it has no memory for by a line, and goes on; a selector
                // looks at its last source only
                const bool tells = is_good && reader.kind != DICTIONARY && !is_selector(reader);
                const tally seen =
                    fail_everywhere(platform.of_xml, how, tells, [&] { return reader.read(source.get()); });
                EXPECT_GT(seen.calls, 100u);
                EXPECT_EQ(seen.problems, "");
            }
}

// The pull readers by themselves: whoever catches the exception may ask on

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

/// One call that writes, in all that may differ; `out` is the string that it may write to.
using writing = std::function<int(std::string &out)>;

/// What a call wrote is not looked at after it failed: a file may be cut off anywhere.
void expect_writer_recovers(xml_memory &of_xml, const std::string &name, const writing &write) {
    for (const mode how : both_modes) {
        SCOPED_TRACE(name + name_of(how));
        const tally seen = fail_everywhere(of_xml, how, true, [&] {
            reading outcome;
            std::string out;
            call_library(outcome, [&] { return write(out); });
            if (!*outcome.thrown)
                outcome.records = std::to_string(out.size()); // dates go on
            return outcome;
        });
        EXPECT_TRUE(is_sanitized || seen.calls > 0); // a stream's memory does not fail under a sanitizer
        EXPECT_EQ(seen.problems, "");
    }
}

TEST_F(MemoryFaults, LeaveTheChannelWriterAndItsListAsTheyWere) {
    channel_list list;
    std::string text = good_documents[CHANNELS];
    ASSERT_EQ(parse_descr_list_read(text.data(), &list.records, true, true), 0);
    const std::string before = describe(list.records);
    for (const int write_mode : write_modes)
        for (const int format : {0, 1}) {
            temporary_file file;
            expect_writer_recovers(
                platform.of_xml, "mode " + std::to_string(write_mode) + ", format " + std::to_string(format),
                [&](std::string &out) {
                    return dump_chan_desr(&list.records, file.c_path(), write_mode, format, no_fd, &out,
                                          nullptr);
                });
        }
    EXPECT_EQ(describe(list.records), before);
}

TEST_F(MemoryFaults, LeaveTheConversionOfChannelsAsItWas) {
    std::string text = good_documents[CHANNELS];
    temporary_file file;
    for (const int write_mode : write_modes)
        expect_writer_recovers(platform.of_xml, "mode " + std::to_string(write_mode), [&](std::string &) {
            return dump_chan_desr_from_xml(text.data(), file.c_path(), write_mode, 0, no_fd);
        });
}

template <class Layout> class DictionaryMemoryFaults : public MemoryFaults {};
TYPED_TEST_SUITE(DictionaryMemoryFaults, both_layouts);

TYPED_TEST(DictionaryMemoryFaults, LeaveTheWriterAndItsListAsTheyWere) {
    dictionary<TypeParam> list;
    list.add(1, "A/B", 0.5F);
    list.add(2, "A/C");
    const std::string before = describe(list.entries);
    for (const int write_mode : write_modes) {
        temporary_file file;
        expect_writer_recovers(
            this->platform.of_xml, "mode " + std::to_string(write_mode), [&](std::string &out) {
                return TypeParam::dump(&list.entries, file.c_path(), write_mode, no_fd, &out);
            });
    }
    EXPECT_EQ(describe(list.entries), before);
}

TYPED_TEST(DictionaryMemoryFaults, LeaveTheConversionAsItWas) {
    std::string text = good_documents[DICTIONARY];
    temporary_file file;
    for (const int write_mode : write_modes)
        expect_writer_recovers(
            this->platform.of_xml, "mode " + std::to_string(write_mode),
            [&](std::string &) { return TypeParam::convert(text.data(), file.c_path(), write_mode, no_fd); });
}

// Merging

TEST_F(MemoryFaults, LeaveMergedChannelsThatCanBeUsed) {
    for (const bool force : {false, true})
        for (const mode how : both_modes) {
            SCOPED_TRACE((force ? "forced" : "not forced") + std::string(name_of(how)));
            const tally seen = fail_everywhere(platform.of_xml, how, true, [force] {
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

} // namespace
