/// Calls one reader or writer after the other under callgrind, which counts each call separately and leaves
/// out the start of the program. bench/instructions runs this and reads callgrind's files.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>

#include <valgrind/callgrind.h>

#include "bare.h"
#include "documents.h"
#include "parse_env_index_dictionary.h"
#include "parse_ev_list.h"
#include "uncommon_documents.h"
#include "xml_platform.h"
#include "zeb5_gige_descr.h"

namespace {

using namespace bench;

/// Counts `call`, and prints how many records it handles.
void count(const std::string &name, std::size_t records, const std::function<void()> &call) {
    CALLGRIND_START_INSTRUMENTATION;
    call();
    CALLGRIND_STOP_INSTRUMENTATION;
    CALLGRIND_DUMP_STATS_AT(name.c_str());
    std::printf("%s %zu\n", name.c_str(), records);
}

void require(bool done, const std::string &name) {
    if (done)
        return;
    std::fprintf(stderr, "%s met an error\n", name.c_str());
    std::exit(1);
}

/// `text`: a document of `channels` channels.
void count_memory_reading(const std::string &name, int channels, std::string text) {
    const auto records = static_cast<std::size_t>(channels);
    own_channels of_memory;
    count(name, records,
          [&] { require(parse_descr_list_read(text.data(), &of_memory.list, false, false) == 0, name); });
    count(name + "-bare", records, [&] { bare_scan(text); });
}

void count_reading(const std::string &name, int channels, dialect form) {
    count_memory_reading(name + "-memory", channels, channel_document(channels, form));
    const auto records = static_cast<std::size_t>(channels);
    document_file file(channel_document(channels, form));
    own_channels of_file;
    count(name + "-file", records,
          [&] { require(parse_descr_list_readf(file.path(), &of_file.list, false, false) == 0, name); });
    count(name + "-file-bare", records, [&] { bare_scan_file(file.path()); });
}

void count_uncommon_reading(int channels) {
    const auto some = [=](spelling how) { return spelled_document(channels, how, ONE_TEXT_OF_100); };
    count_memory_reading("read-utf8", channels, some(UTF8));
    count_memory_reading("read-latin1", channels, some(LATIN1));
    count_memory_reading("read-references", channels, some(REFERENCES));
    count_memory_reading("read-handed-over", channels, handed_over_document(channels, AT_ONCE));
}

void count_writing(const char *name, int channels, dialect form) {
    own_channels records;
    add_channels(records.list, channels);
    std::string text;
    count(name, records.list.size(),
          [&] { dump_chan_desr(&records.list, nullptr, 2, form, -1, &text, nullptr); });
}

void count_event_list(int entries) {
    std::string text = event_list_document(entries);
    std::vector<zeb5_ev_entry *> list;
    count("event-list", static_cast<std::size_t>(entries),
          [&] { require(zeb5_parse_ev_list_read(text.data(), &list) == 0, "event-list"); });
    count("event-list-bare", list.size(), [&] { bare_scan(text); });
    zeb5_clean_ev_list(&list);
}

template <class Entry>
void count_dictionary(const std::string &name, int entries, int (*read)(char *, std::vector<Entry *> *)) {
    std::string text = dictionary_document(entries);
    std::vector<Entry *> list;
    count(name, static_cast<std::size_t>(entries), [&] { require(read(text.data(), &list) == 0, name); });
    count(name + "-bare", list.size(), [&] { bare_scan(text); });
    std::for_each(list.begin(), list.end(), std::free);
}

void count_camera(std::size_t bytes) {
    document_file file(camera_document(bytes));
    std::vector<ZEB5GigEFeature *> warm;
    zeb5_fill_gige_descr(file.path(), &warm); // gives the number of features
    std::vector<ZEB5GigEFeature *> list;
    count("camera", warm.size(), [&] { require(!zeb5_fill_gige_descr(file.path(), &list), "camera"); });
    count("camera-bare", list.size(), [&] { bare_dom_file(file.path()); });
    zeb5_clean_gige_descr(&list);
    zeb5_clean_gige_descr(&warm);
}

} // namespace

/// With the argument "growth" reads lists of growing size instead.
int main(int argc, char **argv) {
    const xml_platform platform;
    if (argc == 2 && std::strcmp(argv[1], "growth") == 0) {
        for (const int channels : {10, 1000, 10000, 100000, 1000000})
            count_memory_reading("read-" + std::to_string(channels), channels,
                                 channel_document(channels, CHANDESCRIPTIONS));
        return 0;
    }
    constexpr int channels = 2000;
    count_reading("read", channels, CHANDESCRIPTIONS);
    count_reading("read-daq", channels, DAQ_VARIABLES);
    count_uncommon_reading(channels);
    count_writing("write", channels, CHANDESCRIPTIONS);
    count_writing("write-daq", channels, DAQ_VARIABLES);
    count_event_list(channels);
    count_dictionary("dictionary", channels, parse_env_index_dict_list_read);
    count_dictionary("dictionary-2010", channels, parse_env_index_dict_list_read_2010);
    count_camera(1 << 20);
    return 0;
}
