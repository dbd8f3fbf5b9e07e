#include "limits/parser_memory.h"

#include <cstring>

#include <xercesc/internal/XMLReader.hpp>

namespace zeb5 {

parser_memory::~parser_memory() {
    while (blocks_.behind != &blocks_)
        release(*blocks_.behind);
}

/// Returns the text of the entity that the parser is about to expand, or null if it asks for memory for
/// something else. This leans on the insides of the parser: nothing else tells of expansions in attributes
/// and declarations. It makes a stream of the text, and then a reader of the stream, both as XMemory does:
/// behind a pointer to this. No text of a document can look like a stream, as nobody knows where its table of
/// virtual functions is.
const xercesc::BinMemInputStream *parser_memory::text_of_entity(std::size_t requested) const {
    using xercesc::BinMemInputStream;
    const std::size_t head = xercesc::XMLPlatformUtils::alignPointerForNewBlockAllocation(sizeof(void *));
    const block &last = *blocks_.behind;
    if (requested != head + sizeof(xercesc::XMLReader) || last.size != head + sizeof(BinMemInputStream))
        return nullptr;
    const char *const stream = reinterpret_cast<const char *>(&last + 1) + head;
    if (std::memcmp(stream, static_cast<const void *>(&any_text_), sizeof(void *)) != 0)
        return nullptr;
    return reinterpret_cast<const BinMemInputStream *>(stream);
}

void *parser_memory::allocate(XMLSize_t size) {
    if (const auto *const text = text_of_entity(size))
        meter_.spend(meter_.names.expansion(text->getSize() / sizeof(XMLCh)));
    block *added = nullptr;
    try {
        added = static_cast<block *>(source_.allocate(sizeof(block) + size));
    } catch (...) {
        has_run_out_ = true;
        throw;
    }
    meter_.take(size);
    *added = {&blocks_, blocks_.behind, size};
    blocks_.behind = added->behind->before = added;
    return added + 1;
}

void parser_memory::deallocate(void *memory) {
    if (memory && !has_run_out_)
        release(*(static_cast<block *>(memory) - 1));
}

void parser_memory::release(block &gone) {
    meter_.give_back(gone.size);
    gone.before->behind = gone.behind;
    gone.behind->before = gone.before;
    source_.deallocate(&gone);
}

} // namespace zeb5
