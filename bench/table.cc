#include "table.h"

namespace bench {

namespace {

void print(const table_row &row, bool markdown) {
    std::printf(markdown ? "| %s | %s | %s | %s | %s | %s | %s |\n" : "%-47s %-30s %26s %7s %13s %8s %s\n",
                row.what.c_str(), row.how.c_str(), row.result.c_str(), row.ratio.c_str(), row.spread.c_str(),
                row.goal.c_str(), row.verdict.c_str());
}

} // namespace

void table::add(const table_row &row) {
    if (!has_head_) {
        print({"what", "how", "result", "ratio", "middle half", "goal", ""}, markdown_);
        if (markdown_)
            std::printf("|---|---|--:|--:|--:|--:|---|\n");
        has_head_ = true;
    }
    table_row shown = row;
    if (row.what == last_what_)
        shown.what.clear();
    else if (!last_what_.empty() && !markdown_)
        std::printf("\n");
    last_what_ = row.what;
    print(shown, markdown_);
    std::fflush(stdout);
}

std::string verdict(double value, double goal) {
    if (goal == 0)
        return "";
    return value <= goal ? "ok" : "MISSED";
}

} // namespace bench
