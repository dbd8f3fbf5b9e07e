#include "contest.h"

#include <algorithm>
#include <cmath>
#include <ctime>
#include <optional>

#include "xml_platform.h"

namespace bench {

namespace {

double now(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

/// Returns the seconds of one run.
double timed_run(const contender &one, clockid_t clock) {
    if (one.before)
        one.before();
    const double start = now(clock);
    one.run();
    const double seconds = now(clock) - start;
    if (one.after)
        one.after();
    return seconds;
}

/// Returns the seconds for one unit, over `runs` runs.
double sample(const contender &one, int runs, clockid_t clock) {
    std::optional<xml_platform> platform;
    if (one.holds_platform)
        platform.emplace();
    double seconds = 0;
    for (int i = 0; i < runs; ++i)
        seconds += timed_run(one, clock);
    return seconds / runs / one.units;
}

double quantile(std::vector<double> values, double part) {
    std::sort(values.begin(), values.end());
    const double at = part * static_cast<double>(values.size() - 1);
    const auto below = static_cast<std::size_t>(at);
    const double above_part = at - static_cast<double>(below);
    const double above = values[std::min(below + 1, values.size() - 1)];
    return values[below] * (1 - above_part) + above * above_part;
}

} // namespace

std::vector<standing> hold(const contest &contest, const effort &effort) {
    std::optional<xml_platform> platform;
    if (contest.holds_platform)
        platform.emplace();
    const clockid_t clock = contest.by_wall_clock ? CLOCK_MONOTONIC : CLOCK_PROCESS_CPUTIME_ID;
    const std::size_t count = contest.contenders.size();

    std::vector<int> runs;
    for (const contender &one : contest.contenders) {
        sample(one, 1, clock); // warms up
        const double seconds = sample(one, 1, clock) * one.units;
        runs.push_back(static_cast<int>(std::ceil(effort.seconds_per_sample / (seconds + 1e-9))));
    }
    std::vector<std::vector<double>> times(count);
    std::vector<std::vector<double>> ratios(count);
    const double begin = now(CLOCK_MONOTONIC);
    for (int round = 0; round < effort.most_rounds; ++round) {
        if (round >= effort.least_rounds && now(CLOCK_MONOTONIC) - begin > effort.seconds_per_contest)
            break;
        for (std::size_t turn = 0; turn < count; ++turn) {
            const std::size_t i =
                (turn + static_cast<std::size_t>(round)) % count; // each contender is first in some round
            times[i].push_back(sample(contest.contenders[i], runs[i], clock));
        }
        for (std::size_t i = 0; i < count; ++i)
            ratios[i].push_back(times[0].back() / times[i].back());
    }

    std::vector<standing> standings;
    for (std::size_t i = 0; i < count; ++i)
        standings.push_back({quantile(times[i], 0.5) * 1e9, quantile(ratios[i], 0.5),
                             quantile(ratios[i], 0.25), quantile(ratios[i], 0.75)});
    return standings;
}

} // namespace bench
