/// Compares this library, in one table, with the XML library alone and with the same work done on other
/// libraries.

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstring>
#include <exception>
#include <string>
#include <vector>

#include <malloc.h>

#include "channel_readers.h"
#include "machine.h"
#include "memory_use.h"
#include "rows.h"

namespace {

using namespace bench;

struct options {
    run_size size = FULL;
    bool markdown = false;
    std::vector<std::string> parts; // of titles of wanted rows; none: all rows
};

constexpr char usage[] =
    "usage: compare [--quick] [--markdown] [--keep-memory] [--rows PART_OF_A_TITLE]...\n"
    "\n"
    "  --quick        small sizes and few rounds: under a minute\n"
    "  --markdown     prints the table for a document\n"
    "  --keep-memory  what a run releases is there for the next, at any size\n"
    "  --rows         only what has this in its first column; may be given again\n"
    "\n"
    "Times are medians over rounds in which all take turns; a ratio is the median of the\n"
    "ratios of each round, this library's time (the first line's) to that of the line.\n"
    "Exit status: 0, or 1 when something was not done right; a missed goal is only shown.\n";

bool understand(int count, char **arguments, options &wanted) {
    for (int i = 1; i < count; ++i) {
        if (!std::strcmp(arguments[i], "--quick"))
            wanted.size = QUICK;
        else if (!std::strcmp(arguments[i], "--markdown"))
            wanted.markdown = true;
        else if (!std::strcmp(arguments[i], "--keep-memory"))
            keeps_memory = true;
        else if (!std::strcmp(arguments[i], "--rows") && i + 1 < count)
            wanted.parts.push_back(arguments[++i]);
        else
            return false;
    }
    return true;
}

void add_contest(table &out, const std::string &title, const contest &contest, const effort &effort) {
    const std::vector<standing> standings = hold(contest, effort);
    for (std::size_t i = 0; i < standings.size(); ++i) {
        const contender &one = contest.contenders[i];
        const standing &s = standings[i];
        table_row row{title, one.name, format("%.1f ns/%s", s.nanoseconds, contest.unit.c_str()), "", "",
                      "",    ""};
        if (i > 0) {
            row.ratio = format("%.3f", s.ratio);
            row.spread = format("%.2f - %.2f", s.low, s.high);
            row.verdict = verdict(s.ratio, one.goal);
            if (one.goal != 0)
                row.goal = format("<= %.2f", one.goal);
        }
        out.add(row);
    }
}

/// Sets what the allocator of the C library sets by itself once large blocks were freed, so that the order of
/// the rows makes no difference. Up to 64 MB that one run has released can be used by the next, or all of it
/// if memory is to be kept.
void settle_allocator() {
    mallopt(M_MMAP_THRESHOLD, 32 << 20);
    mallopt(M_TRIM_THRESHOLD, keeps_memory ? INT_MAX : 64 << 20);
}

void add_all(table &out, const options &wanted) {
    const auto is_wanted = [&wanted](const std::string &title) {
        const auto has = [&title](const std::string &part) { return title.find(part) != std::string::npos; };
        return wanted.parts.empty() || std::any_of(wanted.parts.begin(), wanted.parts.end(), has);
    };
    // First, while this process is small, as children begin with its size
    for (const memory_rows &rows : reading_memory_rows(wanted.size))
        if (is_wanted(rows.title))
            for (const table_row &row : rows.measure(rows.title))
                out.add(row);
    settle_allocator();
    const effort effort = wanted.size == QUICK ? bench::effort{.seconds_per_sample = 0.002,
                                                               .least_rounds = 5,
                                                               .most_rounds = 51,
                                                               .seconds_per_contest = 0.5}
                                               : bench::effort{.seconds_per_sample = 0.005,
                                                               .least_rounds = 7,
                                                               .most_rounds = 101,
                                                               .seconds_per_contest = 4};
    for (const auto &group : {reading_rows, uncommon_rows, document_rows, writing_rows, look_up_rows,
                              companion_rows, scaling_rows})
        for (const timed_rows &rows : group(wanted.size))
            if (is_wanted(rows.title))
                add_contest(out, rows.title, rows.make(), effort);
}

} // namespace

int main(int count, char **arguments) {
    options wanted;
    if (!understand(count, arguments, wanted)) {
        std::fputs(usage, stderr);
        return 1;
    }
    try {
        std::printf("%s\n\n", machine_line().c_str());
        table out(wanted.markdown);
        add_all(out, wanted);
        std::printf("\npeak memory of the whole run: %.0f MB\n",
                    static_cast<double>(peak_resident_bytes()) / (1 << 20));
    } catch (const std::exception &problem) {
        std::fprintf(stderr, "%s\n", problem.what());
        return 1;
    }
    return 0;
}
