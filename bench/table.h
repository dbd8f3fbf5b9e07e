#ifndef ZEB5_BENCH_TABLE_H
#define ZEB5_BENCH_TABLE_H

/// The table of all results.

#include <string>
#include <vector>

namespace bench {

struct table_row {
    std::string what;   // what is done, on how much
    std::string how;    // which contender
    std::string result; // with its unit
    std::string ratio;  // of this library's result to this one
    std::string spread; // the middle half of the ratios
    std::string goal;
    std::string verdict;
};

/// printf() into a string.
template <class... Value> std::string format(const char *text, Value... value);

class table {
public:
    explicit table(bool markdown) : markdown_(markdown) {}

    /// Prints the row at once, so that a long run shows its progress.
    void add(const table_row &row);

private:
    bool markdown_;
    bool has_head_ = false;
    std::string last_what_; // not printed again in the next row
};

/// "ok" or "MISSED"; empty without a goal.
std::string verdict(double value, double goal);

} // namespace bench

#include <cstdio>

template <class... Value> std::string bench::format(const char *text, Value... value) {
    char line[256];
    std::snprintf(line, sizeof line, text, value...);
    return line;
}

#endif
