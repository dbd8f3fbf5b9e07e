#include "limits/parser_memory.h"

namespace zeb5 {

parser_memory::~parser_memory() {
    while (blocks_.behind != &blocks_)
        deallocate(blocks_.behind + 1);
}

void *parser_memory::allocate(XMLSize_t size) {
    meter_.take(size);
    auto *const added = static_cast<block *>(source_.allocate(sizeof(block) + size));
    *added = {&blocks_, blocks_.behind, size};
    blocks_.behind = added->behind->before = added;
    return added + 1;
}

void parser_memory::deallocate(void *memory) {
    if (!memory)
        return;
    block *const gone = static_cast<block *>(memory) - 1;
    meter_.give_back(gone->size);
    gone->before->behind = gone->behind;
    gone->behind->before = gone->before;
    source_.deallocate(gone);
}

} // namespace zeb5
