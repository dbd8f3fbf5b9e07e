#ifndef ZEB5_TAG_MEMO_H
#define ZEB5_TAG_MEMO_H

/// Element names, narrowed once.

#include <array>
#include <cstdint>
#include <cstring>

#include "narrow_text.h"
#include "tag_table.h"

namespace zeb5 {

/// A document has few element names, and the parser passes each by the pointer of its declaration. The name
/// under a pointer is compared with the one kept for it, as memory is used again; then nothing is copied.
/// That saves 2 % of the instructions of reading channels, and lets the look-up of what an element does
/// compare numbers.
class tag_memo {
public:
    /// The narrow form of a null-terminated name, good until the next call; without a text where the
    /// transcoder gives none. The XML platform must be up.
    tag_name find(const XMLCh *name, narrower &narrower) {
        entry &kept = entries_[slot_of(name)];
        if (kept.name != name || !is_same(name, kept.text))
            return keep(name, kept, narrower);
        return {kept.text, kept.length};
    }

private:
    struct entry {
        const XMLCh *name = nullptr; // null: free
        std::size_t length = 0;
        char text[48] = {}; // plain ASCII, the rest zero
    };

    static std::size_t slot_of(const XMLCh *name) {
        return reinterpret_cast<std::uintptr_t>(name) * golden_ratio >> (64 - slot_bits);
    }

    static bool is_same(const XMLCh *name, const char *text) {
        std::size_t i = 0;
        while (name[i] == static_cast<unsigned char>(text[i]))
            if (text[i++] == '\0')
                return true;
        return false;
    }

    [[gnu::noinline]] tag_name keep(const XMLCh *name, entry &kept, narrower &narrower) {
        char *const text = narrower.narrow(name, xercesc::XMLString::stringLen(name), long_text_);
        const std::size_t length = long_text_.size();
        if (!text || length >= sizeof kept.text)
            return {text, length};
        kept = {};
        std::memcpy(kept.text, text, length);
        kept.length = length;
        if (is_same(name, kept.text)) // what the transcoder changes is not recognised again
            kept.name = name;
        return {kept.text, length};
    }

    static constexpr unsigned slot_bits = 8;
    std::array<entry, std::size_t{1} << slot_bits> entries_;
    narrow_buffer long_text_;
};

} // namespace zeb5

#endif
