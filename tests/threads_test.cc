/// Readers, the selector, the camera reader and the writers at the same time on several threads, each with
/// objects of its own. Under the thread sanitizer these tests are to be silent, the XML library included,
/// which is not instrumented.
///
/// ZEB5XML_THREAD_DOCUMENTS in the environment says how many documents each thread reads; without it, few.

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <thread>

#include <gtest/gtest.h>

#include "support/capture.h"
#include "support/every_reader.h"
#include "xml_platform.h"

namespace {

constexpr std::size_t thread_count = 8;

std::size_t documents_of_a_thread() {
    const char *const given = std::getenv("ZEB5XML_THREAD_DOCUMENTS");
    return given ? std::strtoul(given, nullptr, 10) : 100;
}

/// Everything that a thread may do, each with the documents of one thread.
std::string write_channels(char *text) {
    channel_list list;
    std::string out;
    parse_descr_list_read(text, &list.records, true, true);
    for (const int format : {0, 1})
        dump_chan_desr(&list.records, nullptr, 2, format, -1, &out, nullptr);
    return out;
}

std::string write_dictionary(char *text) {
    dictionary<layout_2010> list;
    layout_2010::read_memory(text, &list.entries);
    char null_device[] = "/dev/null";
    layout_2010::dump(&list.entries, null_device, 1, -1, nullptr);
    layout_2010::dump(&list.entries, null_device, 2, -1, nullptr);
    return describe(list.entries);
}

template <document_kind Kind, auto Write> reading write(char *) {
    std::string text = good_documents[Kind];
    return {0, "", Write(text.data())};
}

const reader_row writers[] = {
    {"channel writer", CHANNELS, false, write<CHANNELS, write_channels>},
    {"dictionary writer", DICTIONARY, false, write<DICTIONARY, write_dictionary>},
};

std::vector<repeated_reading> all_tasks() {
    std::vector<repeated_reading> tasks;
    for (const reader_row &reader : every_reader)
        for (const std::string &document : {good_documents[reader.kind], bad_document(reader.kind)})
            tasks.emplace_back(reader, document);
    for (const reader_row &writer : writers)
        tasks.emplace_back(writer, "");
    return tasks;
}

void expect_the_same_on_all_threads() {
    const std::size_t documents = documents_of_a_thread();
    std::optional<silence> quiet(std::in_place);
    auto expected = all_tasks();
    for (repeated_reading &one : expected)
        one.expected = one.read();
    std::vector<std::string> first_wrong(thread_count);
    std::vector<std::thread> threads;
    const auto begin = std::chrono::steady_clock::now();
    for (std::size_t number = 0; number < thread_count; ++number)
        threads.emplace_back([&expected, documents, number, &wrong = first_wrong[number]] {
            auto own = all_tasks();
            for (std::size_t i = 0; i < documents; ++i) {
                const std::size_t at = (i + 5 * number) % own.size(); // no two threads do the same
                if (!(own[at].read() == expected[at].expected) && wrong.empty())
                    wrong = own[at].row->name;
            }
        });
    for (std::thread &thread : threads)
        thread.join();
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
    quiet.reset();
    EXPECT_EQ(first_wrong, std::vector<std::string>(thread_count));
    std::cout << thread_count << " threads, " << documents << " documents each: " << time.count() << " s\n";
}

TEST(Threads, GetTheRecordsOfOneThreadFromEveryReaderAndWriter) { expect_the_same_on_all_threads(); }

TEST(Threads, GetThemWhileAPlatformIsHeldToo) {
    const xml_platform platform;
    expect_the_same_on_all_threads();
}

} // namespace
