#ifndef ZEB5_BENCH_MEMORY_USE_H
#define ZEB5_BENCH_MEMORY_USE_H

/// How much memory a piece of work takes. This program's own malloc() and its relatives count while asked to.

#include <cstddef>
#include <functional>

namespace bench {

struct memory_use {
    std::size_t allocations; // calls
    std::size_t kept;        // bytes that are still there at the end, with the allocator's own
    std::size_t peak;        // most bytes at any time
    std::size_t resident;    // growth of the process at its largest, what is not from malloc() included
};

/// Does the work in a child process, where nothing has grown before. `warm_up` comes first and is not
/// counted. Throws when the child fails.
memory_use memory_used_by(const std::function<void()> &warm_up, const std::function<void()> &work);

/// Largest size of this process so far.
std::size_t peak_resident_bytes();

} // namespace bench

#endif
