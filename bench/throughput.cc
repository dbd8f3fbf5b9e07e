/// Measures readers and writers in records a second, for use with Google Benchmark's own tools.

#include <algorithm>
#include <cstdlib>

#include <benchmark/benchmark.h>

#include "documents.h"
#include "parse_env_index_dictionary.h"
#include "parse_ev_list.h"
#include "xml_platform.h"
#include "zeb5_gige_descr.h"

namespace {

using namespace bench;

/// Measures `read(document)`; `release` is not measured.
template <class Read, class Release>
void measure(benchmark::State &state, std::int64_t records, Read read, Release release) {
    const xml_platform platform;
    for (auto round : state) {
        read();
        state.PauseTiming();
        release();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * records);
}

template <dialect Form> void read_channels(benchmark::State &state) {
    std::string text = channel_document(static_cast<int>(state.range(0)), Form);
    channel_list list;
    measure(
        state, state.range(0), [&] { parse_descr_list_read(text.data(), &list, false, false); },
        [&] { clean_chan_desr_list(&list); });
}

template <dialect Form> void read_channel_file(benchmark::State &state) {
    document_file file(channel_document(static_cast<int>(state.range(0)), Form));
    channel_list list;
    measure(
        state, state.range(0), [&] { parse_descr_list_readf(file.path(), &list, false, false); },
        [&] { clean_chan_desr_list(&list); });
}

template <dialect Form> void write_channels(benchmark::State &state) {
    own_channels records;
    add_channels(records.list, static_cast<int>(state.range(0)));
    std::string text;
    measure(
        state, state.range(0), [&] { dump_chan_desr(&records.list, nullptr, 2, Form, -1, &text, nullptr); },
        [&] { text.clear(); });
}

void read_event_list(benchmark::State &state) {
    std::string text = event_list_document(static_cast<int>(state.range(0)));
    std::vector<zeb5_ev_entry *> list;
    measure(
        state, state.range(0), [&] { zeb5_parse_ev_list_read(text.data(), &list); },
        [&] { zeb5_clean_ev_list(&list); });
}

void read_dictionary(benchmark::State &state) {
    std::string text = dictionary_document(static_cast<int>(state.range(0)));
    std::vector<zeb5_env_index_dictionary_entry_2010 *> list;
    measure(
        state, state.range(0), [&] { parse_env_index_dict_list_read_2010(text.data(), &list); },
        [&] {
            std::for_each(list.begin(), list.end(), std::free);
            list.clear();
        });
}

void write_dictionary(benchmark::State &state) {
    std::string source = dictionary_document(static_cast<int>(state.range(0)));
    std::vector<zeb5_env_index_dictionary_entry_2010 *> list;
    parse_env_index_dict_list_read_2010(source.data(), &list);
    std::string text;
    measure(
        state, state.range(0), [&] { dump_env_index_dict_2010(&list, nullptr, 3, -1, &text); },
        [&] { text.clear(); });
    std::for_each(list.begin(), list.end(), std::free);
}

void read_camera(benchmark::State &state) {
    constexpr std::int64_t feature_bytes = 300;
    document_file file(camera_document(static_cast<std::size_t>(state.range(0) * feature_bytes)));
    std::vector<ZEB5GigEFeature *> list;
    zeb5_fill_gige_descr(file.path(), &list);
    const auto features = static_cast<std::int64_t>(list.size());
    zeb5_clean_gige_descr(&list);
    measure(
        state, features, [&] { zeb5_fill_gige_descr(file.path(), &list); },
        [&] { zeb5_clean_gige_descr(&list); });
}

#define AT_ALL_SIZES(function)                                                                               \
    BENCHMARK(function)->Arg(10)->Arg(1000)->Arg(100000)->Unit(benchmark::kMicrosecond)
AT_ALL_SIZES(read_channels<CHANDESCRIPTIONS>);
AT_ALL_SIZES(read_channels<DAQ_VARIABLES>);
AT_ALL_SIZES(read_channel_file<CHANDESCRIPTIONS>);
AT_ALL_SIZES(read_channel_file<DAQ_VARIABLES>);
AT_ALL_SIZES(write_channels<CHANDESCRIPTIONS>);
AT_ALL_SIZES(write_channels<DAQ_VARIABLES>);
AT_ALL_SIZES(read_event_list);
AT_ALL_SIZES(read_dictionary);
AT_ALL_SIZES(write_dictionary);
AT_ALL_SIZES(read_camera);

} // namespace

BENCHMARK_MAIN();
