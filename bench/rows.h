#ifndef ZEB5_BENCH_ROWS_H
#define ZEB5_BENCH_ROWS_H

/// The rows that are measured. Each group is made when its turn comes, so that only its own documents take
/// memory.

#include <functional>
#include <string>
#include <vector>

#include "contest.h"
#include "table.h"

namespace bench {

/// A contest and its title.
struct timed_rows {
    std::string title;
    std::function<contest()> make;
};

/// Rows of memory, measured in a child process.
struct memory_rows {
    std::string title;
    std::function<std::vector<table_row>(const std::string &title)> measure;
};

enum run_size { QUICK, FULL };

std::vector<timed_rows> reading_rows(run_size size);
std::vector<timed_rows> uncommon_rows(run_size size); // texts that are not ASCII, documents handed over
std::vector<timed_rows> document_rows(run_size size); // event lists, dictionaries, camera files
std::vector<timed_rows> writing_rows(run_size size);
std::vector<timed_rows> look_up_rows(run_size size);
std::vector<timed_rows> companion_rows(run_size size); // zeb5xml.hpp beside plain calls
std::vector<timed_rows> scaling_rows(run_size size);
std::vector<memory_rows> reading_memory_rows(run_size size);

} // namespace bench

#endif
