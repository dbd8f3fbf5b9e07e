#include <memory>

#include <benchmark/benchmark.h>

#include "channel_readers.h"
#include "rows.h"
#include "zeb5xml.hpp"

namespace bench {

namespace {

using plain_list = std::vector<chan_descr_2010 *>;

/// The companion header first, then the same by plain calls. It may take at most 1 % more.
contest with_plain_calls(int channels, std::function<void()> companion, std::function<void()> plain) {
    contest result;
    const auto units = static_cast<double>(channels);
    result.contenders = {
        {.name = "zeb5xml.hpp", .units = units, .run = std::move(companion)},
        {.name = "plain calls", .units = units, .run = std::move(plain), .goal = 1.01},
    };
    return result;
}

contest parsing(int channels) {
    const auto document = std::make_shared<std::string>(channel_document(channels, CHANDESCRIPTIONS));
    return with_plain_calls(
        channels, [document] { benchmark::DoNotOptimize(zeb5xml::channel_list::parse(*document).size()); },
        [document] {
            plain_list list;
            parse_descr_list_read(document->data(), &list, false, true);
            benchmark::DoNotOptimize(list.size());
            clean_chan_desr_list(&list);
        });
}

contest walking(int channels) {
    const auto list = std::make_shared<zeb5xml::channel_list>(
        zeb5xml::channel_list::parse(channel_document(channels, CHANDESCRIPTIONS)));
    return with_plain_calls(
        channels,
        [list] {
            std::int32_t sum = 0;
            for (const chan_descr_2010 &channel : std::as_const(*list))
                sum += channel.max_size;
            benchmark::DoNotOptimize(sum);
        },
        [list] {
            std::int32_t sum = 0;
            for (const chan_descr_2010 *channel : list->plain())
                sum += channel->max_size;
            benchmark::DoNotOptimize(sum);
        });
}

contest finding(int channels) {
    const auto list = std::make_shared<zeb5xml::channel_list>(
        zeb5xml::channel_list::parse(channel_document(channels, CHANDESCRIPTIONS)));
    return with_plain_calls(
        channels,
        [list] {
            for (const chan_descr_2010 &channel : std::as_const(*list))
                benchmark::DoNotOptimize(std::as_const(*list).find(channel.prop_name));
        },
        [list] {
            for (const chan_descr_2010 *channel : list->plain())
                benchmark::DoNotOptimize(find_chan_entry(&list->plain(), channel->prop_name));
        });
}

contest writing(int channels) {
    const auto list = std::make_shared<zeb5xml::channel_list>(
        zeb5xml::channel_list::parse(channel_document(channels, CHANDESCRIPTIONS)));
    return with_plain_calls(
        channels, [list] { benchmark::DoNotOptimize(list->text().size()); },
        [list] {
            std::string text;
            dump_chan_desr(&list->plain(), nullptr, 2, 0, -1, &text, nullptr);
            benchmark::DoNotOptimize(text.size());
        });
}

} // namespace

std::vector<timed_rows> companion_rows(run_size) {
    return {{"zeb5xml.hpp, read from memory, 2,000", [] { return parsing(2000); }},
            {"zeb5xml.hpp, walk through, 2,000", [] { return walking(2000); }},
            {"zeb5xml.hpp, find, 2,000", [] { return finding(2000); }},
            {"zeb5xml.hpp, write to a text, 2,000", [] { return writing(2000); }}};
}

} // namespace bench
