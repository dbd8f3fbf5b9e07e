#ifndef ZEB5_BENCH_CONTEST_H
#define ZEB5_BENCH_CONTEST_H

/// Measures several ways of doing one thing against each other.
///
/// They take turns, round after round, and each round gives one ratio: what disturbs the machine for a while
/// disturbs both sides of it. Medians are reported.

#include <functional>
#include <string>
#include <vector>

namespace bench {

struct contender {
    std::string name;
    double units; // records that one run handles
    std::function<void()> run;
    std::function<void()> before = nullptr; // around each run, not measured
    std::function<void()> after = nullptr;
    double goal = 0; // most that the first contender may take, as a multiple of this one; 0: no goal
    bool holds_platform = false; // the XML platform is up while it has its turn, whatever the contest does
};

struct contest {
    std::string unit = "channel";
    std::vector<contender> contenders; // the first is compared with each of the others
    bool holds_platform = true;        // the XML platform is up all the time
    bool by_wall_clock = false;        // else by the time on the processor, which others do not lengthen
};

/// What the median round says of one contender.
struct standing {
    double nanoseconds; // a unit
    double ratio;       // of the first contender's time a unit to this one's
    double low, high;   // the middle half of the ratios lies between these
};

struct effort {
    double seconds_per_sample; // short runs are repeated so long
    int least_rounds;
    int most_rounds;
    double seconds_per_contest; // no new round is begun after this, once there are enough
};

std::vector<standing> hold(const contest &contest, const effort &effort);

} // namespace bench

#endif
