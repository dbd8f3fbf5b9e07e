#ifndef FAILING_MEMORY_H
#define FAILING_MEMORY_H

/// Memory that runs out when told to. The program's own malloc() family stands before the C library's, for
/// the XML library and everything else in the process, too. Under a sanitizer, which has its own, the
/// operators new and delete do instead.

#include <cstddef>

#include <xercesc/framework/MemoryManager.hpp>

namespace failing_memory {

enum mode { ONCE, FROM_THEN_ON };

/// The memory of the XML library, when its platform is initialised with it. The library keeps what it made
/// when its own memory runs out inside of it: on purpose, as it would need memory to let go. So this memory
/// is counted apart, and tells whether it was the one that failed.
class xml_memory : public xercesc::MemoryManager {
public:
    ~xml_memory() override;                  // releases all that the library kept
    void *allocate(XMLSize_t size) override; // throws OutOfMemoryException
    void deallocate(void *block) override;
    xercesc::MemoryManager *getExceptionMemoryManager() override { return this; }

    long live_blocks() const { return live_; }
    bool has_failed() const { return failed_; } // any since the last prepare()
    void prepare() { failed_ = false; }

private:
    struct block {
        block *before;
        block *behind;
    };

    block all_ = {&all_, &all_}; // a ring
    long live_ = 0;
    bool failed_ = false;
};

/// Between arm() and disarm() allocations are counted; the `at`-th one since prepare() fails, and in mode
/// FROM_THEN_ON all that follow.
void prepare(std::size_t at, mode how);
void arm();
void disarm();

bool has_failed();  // any since prepare()
long live_blocks(); // allocated and not yet released, in the whole process; xml_memory's are not counted

} // namespace failing_memory

#endif
