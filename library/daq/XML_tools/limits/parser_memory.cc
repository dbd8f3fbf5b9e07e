#include "limits/parser_memory.h"

#include <algorithm>
#include <cstring>

#include <xercesc/internal/XMLReader.hpp>

namespace zeb5 {

namespace {

/// What an object's pointer to its manager takes before the object.
const std::size_t head = xercesc::XMLPlatformUtils::alignPointerForNewBlockAllocation(sizeof(void *));
const std::size_t size_of_reader = head + sizeof(xercesc::XMLReader);

} // namespace

parser_memory::~parser_memory() {
    while (blocks_.behind != &blocks_)
        release(*blocks_.behind);
}

/// Returns the text of the entity that the parser is about to expand, or null if it asks for memory for
/// something else. This leans on the insides of the parser: nothing else tells of expansions in attributes
/// and declarations. It makes a stream of the text, and then a reader of the stream, both as XMemory does:
/// behind a pointer to this. No text of a document can look like a stream, as nobody knows where its table of
/// virtual functions is.
xercesc::BinMemInputStream *parser_memory::text_of_entity(std::size_t requested) const {
    using xercesc::BinMemInputStream;
    block &last = *blocks_.behind;
    if (requested != size_of_reader || last.size != head + sizeof(BinMemInputStream))
        return nullptr;
    char *const stream = reinterpret_cast<char *>(&last + 1) + head;
    if (std::memcmp(stream, static_cast<const void *>(&any_text_), sizeof(void *)) != 0)
        return nullptr;
    return reinterpret_cast<BinMemInputStream *>(stream);
}

/// References in the text are looked up, and compared with the entities that are open.
void parser_memory::spend_on_expansion(xercesc::BinMemInputStream &text) {
    price references = 1; // the one to this entity
    char16_t part[1024];
    while (const XMLSize_t bytes = text.readBytes(reinterpret_cast<XMLByte *>(part), sizeof part))
        references += static_cast<price>(std::count_if(part, part + bytes / sizeof *part,
                                                       [](char16_t c) { return c == u'&' || c == u'%'; }));
    text.reset();
    meter_.spend(character_price * (text.getSize() / sizeof *part) +
                 references * meter_.names.reference(open_readers_));
}

void *parser_memory::allocate(XMLSize_t size) {
    if (auto *const text = text_of_entity(size))
        spend_on_expansion(*text);
    block *added = nullptr;
    try {
        added = static_cast<block *>(source_.allocate(sizeof(block) + size));
    } catch (...) {
        has_run_out_ = true;
        throw;
    }
    meter_.take(size);
    open_readers_ += size == size_of_reader;
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
    open_readers_ -= gone.size == size_of_reader;
    gone.before->behind = gone.behind;
    gone.behind->before = gone.before;
    source_.deallocate(&gone);
}

} // namespace zeb5
