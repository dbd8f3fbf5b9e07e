#include <algorithm>
#include <cstring>
#include <memory>
#include <stdexcept>

#include <benchmark/benchmark.h>

#include "chan_selector.h"
#include "channel_readers.h"
#include "rows.h"

namespace bench {

namespace {

contest duplicates(int channels) {
    const auto document = std::make_shared<source>(channels, CHANDESCRIPTIONS, MEMORY);
    contest result;
    result.contenders = {
        reading("duplicates deleted", channels,
                [document](channel_list &list) { document->read(list, true); }),
        reading(
            "duplicates kept", channels, [document](channel_list &list) { document->read(list, false); },
            1.05),
    };
    return result;
}

/// A selector that has read channels, and their names.
struct filled_selector {
    explicit filled_selector(int channels) {
        std::string document = channel_document(channels, CHANDESCRIPTIONS);
        selector.change_mode(EXTR_FROM_XML);
        std::vector<char *> sources{document.data()};
        if (selector.set_descriptions(&sources, nullptr) ||
            parse_descr_list_read(document.data(), &read.list, false, false) != 0)
            throw std::runtime_error("the library met an error");
    }

    chan_selector selector;
    own_channels read; // a second copy of the channels, so that no name of the selector is handed out
};

int all_questions(filled_selector &filled) {
    chan_selector &selector = filled.selector;
    int answers = 0;
    for (int i = 0; i < selector.size(); ++i) {
        char *const name = filled.read.list[static_cast<std::size_t>(i)]->daq_name;
        char *const prop = filled.read.list[static_cast<std::size_t>(i)]->prop_name;
        answers +=
            selector.get_event_type(name) + selector.get_event_type(prop) + selector.get_data_type(name);
        answers += selector.find_channel(ZEB5_EV_NORMAL, name) + selector.find_channel(ZEB5_EV_NORMAL, prop);
        answers += selector.is_channel_slow(i) + selector.is_channel_ml(i) + selector.get_subchannels(i);
        answers += selector.set_counter(i, i);
    }
    return answers;
}

/// Each run has a selector of its own, so that the first question, which builds the index, counts, too.
contender questions(int channels, double goal = 0) {
    const auto filled = std::make_shared<std::unique_ptr<filled_selector>>();
    return {.name = grouped(channels),
            .units = static_cast<double>(channels),
            .run = [filled] { benchmark::DoNotOptimize(all_questions(**filled)); },
            .before = [channels, filled] { *filled = std::make_unique<filled_selector>(channels); },
            .after = [filled] { filled->reset(); },
            .goal = goal};
}

contest selector_growth(int most) {
    contest result;
    result.contenders = {questions(most)};
    for (int channels = most / 10; channels > 1000; channels /= 10)
        result.contenders.push_back(questions(channels));
    result.contenders.push_back(questions(1000, 1.5));
    return result;
}

constexpr std::size_t names_asked = 100;

/// Calls `ask` for names from all over the list.
template <class Ask>
contender asking(const std::string &name, filled_selector &filled, double goal, Ask ask) {
    return {.name = name,
            .units = names_asked,
            .run =
                [&filled, ask] {
                    const std::size_t size = filled.read.list.size();
                    for (std::size_t i = 0; i < names_asked; ++i)
                        benchmark::DoNotOptimize(ask(filled.read.list[i * 7919 % size]->daq_name));
                },
            .goal = goal};
}

const chan_descr_2010 *search(const channel_list &list, const char *name) {
    const auto found = std::find_if(list.begin(), list.end(), [name](const chan_descr_2010 *record) {
        return std::strcmp(record->daq_name, name) == 0;
    });
    return found == list.end() ? nullptr : *found;
}

/// The names of the first `handed_out` of `channels` channels were handed out.
contest selector_handed_out(int channels, int handed_out) {
    const auto filled = std::make_shared<filled_selector>(channels);
    for (int i = 0; i < handed_out; ++i)
        filled->selector.get_channel(i);
    contest result;
    result.unit = "question";
    result.contenders = {
        asking("selector", *filled, 0, [filled](char *name) { return filled->selector.get_data_type(name); }),
        asking("search from the front", *filled, 1,
               [filled](char *name) { return search(filled->read.list, name)->dtype; })};
    return result;
}

} // namespace

std::vector<timed_rows> look_up_rows(run_size size) {
    std::vector<timed_rows> rows;
    rows.push_back({"duplicate deletion, memory, 10,000", [] { return duplicates(10000); }});
    if (size == FULL)
        rows.push_back({"duplicate deletion, memory, 100,000", [] { return duplicates(100000); }});
    const int most = size == QUICK ? 10000 : 100000;
    rows.push_back(
        {"selector, all questions of every channel, none handed out", [=] { return selector_growth(most); }});
    for (const int channels : {256, 1000, 10000})
        rows.push_back({"selector, one question, all of " + grouped(channels) + " handed out",
                        [=] { return selector_handed_out(channels, channels); }});
    rows.push_back({"selector, one question, 256 of 10,000 handed out",
                    [=] { return selector_handed_out(10000, 256); }});
    return rows;
}

} // namespace bench
