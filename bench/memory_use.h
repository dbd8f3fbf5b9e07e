#ifndef ZEB5_BENCH_MEMORY_USE_H
#define ZEB5_BENCH_MEMORY_USE_H

/// Measures how much memory a piece of work takes. The program replaces malloc() and its relatives, which
/// count while counting is on.

#include <cstddef>
#include <functional>

namespace bench {

struct memory_use {
    std::size_t allocations; // calls
    std::size_t kept;        // bytes still allocated at the end, those of the allocator included
    std::size_t peak;        // most bytes at any time
    std::size_t resident;    // largest growth of the process, with memory that is not from malloc()
};

/// Does the work in a child process, whose heap has not grown before. `warm_up` runs first and is not
/// counted. Throws when the child fails.
memory_use memory_used_by(const std::function<void()> &warm_up, const std::function<void()> &work);

/// Returns the largest size of this process so far.
std::size_t peak_resident_bytes();

} // namespace bench

#endif
