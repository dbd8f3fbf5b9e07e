#include "memory_use.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <fstream>
#include <stdexcept>
#include <string>

#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// Counting happens in a child process with one thread; elsewhere it costs one check of `counting`.
bool counting = false;
bench::memory_use use;
std::ptrdiff_t live = 0;

// What the allocator stores with each block
constexpr std::size_t head = sizeof(std::size_t);

void grow(void *block) {
    if (!counting || !block)
        return;
    ++use.allocations;
    live += static_cast<std::ptrdiff_t>(malloc_usable_size(block) + head);
    use.peak = std::max(use.peak, static_cast<std::size_t>(std::max<std::ptrdiff_t>(live, 0)));
}

void shrink(void *block) {
    if (counting && block)
        live -= static_cast<std::ptrdiff_t>(malloc_usable_size(block) + head);
}

} // namespace

// The names under which the allocator of the C library remains reachable
extern "C" {
void *__libc_malloc(std::size_t size);
void *__libc_calloc(std::size_t count, std::size_t size);
void *__libc_realloc(void *block, std::size_t size);
void *__libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void *block);

void *malloc(std::size_t size) {
    void *const block = __libc_malloc(size);
    grow(block);
    return block;
}

void *calloc(std::size_t count, std::size_t size) {
    void *const block = __libc_calloc(count, size);
    grow(block);
    return block;
}

void *realloc(void *old, std::size_t size) {
    shrink(old);
    void *const block = __libc_realloc(old, size);
    grow(block);
    return block;
}

void *aligned_alloc(std::size_t alignment, std::size_t size) {
    void *const block = __libc_memalign(alignment, size);
    grow(block);
    return block;
}

int posix_memalign(void **block, std::size_t alignment, std::size_t size) {
    *block = aligned_alloc(alignment, size);
    return *block ? 0 : ENOMEM;
}

void free(void *block) {
    shrink(block);
    __libc_free(block);
}
}

namespace bench {

namespace {

/// Returns the value of a line of /proc/self/status in bytes.
std::size_t status_line(const char *name) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.rfind(name, 0) == 0)
            return std::stoul(line.substr(std::strlen(name) + 1)) * 1024;
    return 0;
}

memory_use measured(const std::function<void()> &work) {
    malloc_trim(0); // else the records would go into free memory of the heap
    std::ofstream("/proc/self/clear_refs") << 5 << std::flush; // resets the peak
    const std::size_t before = status_line("VmRSS");
    use = {};
    live = 0;
    counting = true;
    work();
    counting = false;
    use.kept = static_cast<std::size_t>(std::max<std::ptrdiff_t>(live, 0));
    use.resident = status_line("VmHWM") - before;
    return use;
}

} // namespace

memory_use memory_used_by(const std::function<void()> &warm_up, const std::function<void()> &work) {
    int ends[2];
    if (pipe(ends) != 0)
        throw std::runtime_error("no pipe");
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        try {
            warm_up();
            const memory_use result = measured(work);
            _exit(write(ends[1], &result, sizeof result) == sizeof result ? 0 : 1);
        } catch (const std::exception &problem) {
            std::fprintf(stderr, "%s\n", problem.what());
        }
        _exit(1);
    }
    close(ends[1]);
    memory_use result{};
    const bool told = read(ends[0], &result, sizeof result) == sizeof result;
    close(ends[0]);
    int status = 0;
    if (child > 0)
        waitpid(child, &status, 0);
    if (child < 0 || !told || status != 0)
        throw std::runtime_error("the memory of a child process was not measured");
    return result;
}

std::size_t peak_resident_bytes() { return status_line("VmHWM"); }

} // namespace bench
