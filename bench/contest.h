#ifndef ZEB5_BENCH_CONTEST_H
#define ZEB5_BENCH_CONTEST_H

/// Measures several ways of doing one thing against each other.
///
/// The ways take turns, round after round, and each round gives one ratio. So what slows the machine down for
/// a while slows both sides of a ratio. Medians are reported.

#include <functional>
#include <string>
#include <vector>

namespace bench {

struct contender {
    std::string name;
    double units; // records that one run handles
    std::function<void()> run;
    std::function<void()> before = nullptr; // called around each run, not measured
    std::function<void()> after = nullptr;
    double goal = 0;             // largest ratio of the first contender's time to this one's; 0: no goal
    bool holds_platform = false; // the XML platform is up during its turns, whatever the contest says
};

struct contest {
    std::string unit = "channel";
    std::vector<contender> contenders; // the first is compared with each of the others
    bool holds_platform = true;        // the XML platform is up all the time
    bool by_wall_clock = false;        // else by processor time, which other processes do not lengthen
};

/// The results of one contender in the median round.
struct standing {
    double nanoseconds; // a unit
    double ratio;       // of the first contender's time for a unit to this one's
    double low, high;   // the middle half of the ratios lies between these
};

struct effort {
    double seconds_per_sample; // short runs are repeated to reach this
    int least_rounds;
    int most_rounds;
    double seconds_per_contest; // no new round begins later, once there are least_rounds
};

std::vector<standing> hold(const contest &contest, const effort &effort);

} // namespace bench

#endif
