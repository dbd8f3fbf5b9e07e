#ifndef ZEB5_PARSER_MEMORY_H
#define ZEB5_PARSER_MEMORY_H

/// The memory of an XML parser.

#include <cstddef>

#include <xercesc/framework/MemoryManager.hpp>
#include <xercesc/util/BinMemInputStream.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include "limits/parse_meter.h"

namespace zeb5 {

/// Memory of one parser, from the XML library's own manager; all of it is given back at the latest when this
/// ends. The parser by itself loses parts of declarations that are ill-formed, up to ten times the document's
/// size, and much of what it was making when memory runs out. Once that has happened, nothing is given back
/// before the end: the parser may give the same block back twice then.
class parser_memory final : public xercesc::MemoryManager {
public:
    /// `meter` must outlive this.
    explicit parser_memory(parse_meter &meter) : meter_(meter) {}
    ~parser_memory() override;
    parser_memory(const parser_memory &) = delete;
    parser_memory &operator=(const parser_memory &) = delete;

    void *allocate(XMLSize_t size) override;
    void deallocate(void *memory) override;

    /// Exceptions outlive the parser.
    xercesc::MemoryManager *getExceptionMemoryManager() override { return &source_; }

private:
    /// Stands before each block that is in use; they form a ring.
    struct alignas(std::max_align_t) block {
        block *before;
        block *behind;
        std::size_t size;
    };

    xercesc::BinMemInputStream *text_of_entity(std::size_t requested) const;
    void spend_on_expansion(xercesc::BinMemInputStream &text);
    void release(block &gone);

    parse_meter &meter_;
    xercesc::MemoryManager &source_ = *xercesc::XMLPlatformUtils::fgMemoryManager;
    block blocks_{&blocks_, &blocks_, 0};
    std::size_t open_readers_ = 0; // of entities, and of the document
    bool has_run_out_ = false;
    const xercesc::BinMemInputStream any_text_{nullptr, 0, xercesc::BinMemInputStream::BufOpt_Reference,
                                               &source_};
};

} // namespace zeb5

#endif
