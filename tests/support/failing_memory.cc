#include "support/failing_memory.h"

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <new>

#include <xercesc/util/OutOfMemoryException.hpp>

#include "support/sanitized.h"

namespace {

std::atomic<long> live{0};
bool armed = false;
bool failed = false;
std::size_t calls = 0;
std::size_t failing_call = 0;
failing_memory::mode failing_mode = failing_memory::ONCE;

bool fails() {
    if (!armed)
        return false;
    ++calls;
    if (calls < failing_call || (calls > failing_call && failing_mode == failing_memory::ONCE))
        return false;
    failed = true;
    return true;
}

void *counted(void *block) {
    if (block)
        ++live;
    else
        errno = ENOMEM;
    return block;
}

} // namespace

void failing_memory::prepare(std::size_t at, mode how) {
    calls = 0;
    failing_call = at;
    failing_mode = how;
    failed = false;
}
void failing_memory::arm() { armed = true; }
void failing_memory::disarm() { armed = false; }
bool failing_memory::has_failed() { return failed; }
long failing_memory::live_blocks() { return live; }

void *failing_memory::xml_memory::allocate(XMLSize_t size) {
    if (fails()) {
        failed_ = true;
        throw xercesc::OutOfMemoryException();
    }
    const bool was_armed = armed;
    armed = false; // it counts once, and here
    auto *const added = static_cast<block *>(operator new(sizeof(block) + size));
    armed = was_armed;
    *added = {&all_, all_.behind};
    all_.behind = added->behind->before = added;
    ++live_;
    --live;
    return added + 1;
}

void failing_memory::xml_memory::deallocate(void *memory) {
    if (!memory)
        return;
    block *const gone = static_cast<block *>(memory) - 1;
    gone->before->behind = gone->behind;
    gone->behind->before = gone->before;
    --live_;
    ++live;
    operator delete(gone);
}

failing_memory::xml_memory::~xml_memory() {
    while (all_.behind != &all_)
        deallocate(all_.behind + 1);
}

#ifdef SANITIZED
void *operator new(std::size_t size) {
    if (void *const block = fails() ? nullptr : counted(std::malloc(size)))
        return block;
    throw std::bad_alloc();
}
void *operator new[](std::size_t size) { return operator new(size); }
void operator delete(void *block) noexcept {
    live -= block != nullptr;
    std::free(block);
}
void operator delete[](void *block) noexcept { operator delete(block); }
void operator delete(void *block, std::size_t) noexcept { operator delete(block); }
void operator delete[](void *block, std::size_t) noexcept { operator delete(block); }

#else

extern "C" {

void *__libc_malloc(std::size_t size);
void *__libc_calloc(std::size_t count, std::size_t size);
void *__libc_realloc(void *block, std::size_t size);
void __libc_free(void *block);

void *malloc(std::size_t size) { return counted(fails() ? nullptr : __libc_malloc(size)); }
void *calloc(std::size_t count, std::size_t size) {
    return counted(fails() ? nullptr : __libc_calloc(count, size));
}
void *realloc(void *block, std::size_t size) {
    if (!block)
        return malloc(size);
    return fails() ? nullptr : __libc_realloc(block, size);
}
void free(void *block) {
    live -= block != nullptr;
    __libc_free(block);
}
}

#endif
