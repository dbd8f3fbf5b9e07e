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

int all_questions(chan_selector &selector) {
    int answers = 0;
    for (int i = 0; i < selector.size(); ++i) {
        char *const name = selector.get_channel(i);
        char *const prop = selector.get_prop(i);
        answers +=
            selector.get_event_type(name) + selector.get_event_type(prop) + selector.get_data_type(name);
        answers += selector.find_channel(ZEB5_EV_NORMAL, name) + selector.find_channel(ZEB5_EV_NORMAL, prop);
        answers += selector.is_channel_slow(i) + selector.is_channel_ml(i) + selector.get_subchannels(i);
        answers += selector.set_counter(i, i);
    }
    return answers;
}

/// A selector of its own for each run, so that the first question, which makes the index, counts, too.
contender questions(int channels, double goal = 0) {
    const auto document = std::make_shared<std::string>(channel_document(channels, CHANDESCRIPTIONS));
    const auto selector = std::make_shared<std::unique_ptr<chan_selector>>();
    return {.name = grouped(channels),
            .units = static_cast<double>(channels),
            .run = [selector] { benchmark::DoNotOptimize(all_questions(**selector)); },
            .before =
                [document, selector] {
                    *selector = std::make_unique<chan_selector>();
                    (*selector)->change_mode(EXTR_FROM_XML);
                    std::vector<char *> sources{document->data()};
                    if ((*selector)->set_descriptions(&sources, nullptr))
                        throw std::runtime_error("the library met an error");
                },
            .after = [selector] { selector->reset(); },
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

} // namespace

std::vector<timed_rows> look_up_rows(run_size size) {
    std::vector<timed_rows> rows;
    rows.push_back({"duplicate deletion, memory, 10,000", [] { return duplicates(10000); }});
    if (size == FULL)
        rows.push_back({"duplicate deletion, memory, 100,000", [] { return duplicates(100000); }});
    const int most = size == QUICK ? 10000 : 100000;
    rows.push_back({"selector, all questions of every channel", [=] { return selector_growth(most); }});
    return rows;
}

} // namespace bench
