#include "limits/parser_memory.h"

namespace zeb5 {

parser_memory::~parser_memory() {
    while (blocks_.behind != &blocks_)
        deallocate(blocks_.behind + 1);
}

void *parser_memory::allocate(XMLSize_t size) {
    auto *const added = static_cast<link *>(source_.allocate(sizeof(link) + size));
    *added = {&blocks_, blocks_.behind};
    blocks_.behind = added->behind->before = added;
    return added + 1;
}

void parser_memory::deallocate(void *memory) {
    if (!memory)
        return;
    link *const gone = static_cast<link *>(memory) - 1;
    gone->before->behind = gone->behind;
    gone->behind->before = gone->before;
    source_.deallocate(gone);
}

} // namespace zeb5
