#include <functional>
#include <memory>
#include <thread>

#include "channel_readers.h"
#include "rows.h"

namespace bench {

namespace {

contender reading_of(int channels, double goal = 0) {
    const auto document = std::make_shared<source>(channels, CHANDESCRIPTIONS, FILE_ON_DISK);
    return reading(
        grouped(channels), channels, [document](channel_list &list) { document->read(list); }, goal);
}

contest reading_growth(int most) {
    contest result;
    for (int channels = most; channels > 1000; channels /= 10)
        result.contenders.push_back(reading_of(channels));
    result.contenders.push_back(reading_of(1000, 1.8));
    return result;
}

/// Calls `read` on two threads, each with a list of its own.
contender on_two_threads(const char *name, int channels, std::function<void(channel_list &)> read) {
    const auto other = std::make_shared<own_channels>();
    contender two = reading(name, channels, [read, other](channel_list &list) {
        std::thread thread([&] { read(other->list); });
        read(list);
        thread.join();
    });
    two.after = [release = std::move(two.after), other] {
        release();
        clean_chan_desr_list(&other->list);
    };
    return two;
}

/// Two threads do twice the work of one. If they do not slow each other down, they take as long as one. The
/// bare scans show what the machine can do at that moment.
contest threads(int channels) {
    const auto document = std::make_shared<source>(channels, CHANDESCRIPTIONS, MEMORY);
    const auto read = [document](channel_list &list) { document->read(list); };
    const auto scan = [document](channel_list &) { document->scan(); };
    contest result;
    result.by_wall_clock = true;
    result.contenders = {on_two_threads("two threads, a document each", channels, read),
                         reading("one thread", channels, read),
                         on_two_threads("two threads, a bare scan each", channels, scan),
                         reading("one thread, bare scan", channels, scan)};
    return result;
}

} // namespace

std::vector<timed_rows> scaling_rows(run_size size) {
    const int most = size == QUICK ? 10000 : 1000000;
    const int channels = size == QUICK ? 2000 : 20000;
    return {{"growth, read CHANDESCRIPTIONS, file", [=] { return reading_growth(most); }},
            {"threads, wall clock, memory, " + grouped(channels), [=] { return threads(channels); }}};
}

} // namespace bench
