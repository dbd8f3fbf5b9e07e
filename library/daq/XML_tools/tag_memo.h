#ifndef ZEB5_TAG_MEMO_H
#define ZEB5_TAG_MEMO_H

/// Element names, narrowed once.

#include <array>
#include <cstdint>
#include <cstring>

#include <xercesc/util/XMLString.hpp>

#include "narrow_text.h"

namespace zeb5 {

struct tag_name {
    char *text = nullptr; // null: none
    std::size_t length = 0;
};

/// A document has few element names, and the parser numbers them. The name of a number is compared with the
/// one kept for it, as a number may come from anywhere; then nothing is copied. That saves 2 % of the
/// instructions of reading channels, and lets the look-up of what an element does compare numbers.
class tag_memo {
public:
    /// The narrow form of a null-terminated name, good until the next call; without a text where the
    /// transcoder gives none. The XML platform must be up.
    tag_name find(const XMLCh *name, std::size_t id, narrower &narrower) {
        entry &kept = entries_[id % entries_.size()];
        if (!is_same(name, kept.text, kept.recognised))
            return keep(name, kept, narrower);
        return {kept.text, kept.recognised - 1};
    }

private:
    struct entry {
        std::size_t recognised; // characters of the name and its null; 0: none, narrow it again
        char text[40];          // the rest zero
    };

    /// Whether the first `count` characters are these; looks at none behind the first that differs, as the
    /// name may be shorter.
    static bool is_same(const XMLCh *name, const char *text, std::size_t count) {
        const auto differs = [&](std::size_t i) { return name[i] != static_cast<unsigned char>(text[i]); };
        std::size_t i = 0;
        for (; i + 4 <= count; i += 4)
            if (differs(i) || differs(i + 1) || differs(i + 2) || differs(i + 3))
                return false;
        for (; i < count; ++i)
            if (differs(i))
                return false;
        return count != 0;
    }

    [[gnu::noinline]] tag_name keep(const XMLCh *name, entry &kept, narrower &narrower) {
        char *const text = narrower.narrow(name, xercesc::XMLString::stringLen(name), long_text_);
        const std::size_t length = long_text_.size();
        if (!text || length >= sizeof kept.text)
            return {text, length};
        kept = {};
        std::memcpy(kept.text, text, length);
        if (is_same(name, text, length + 1)) // what the transcoder changes is not recognised again
            kept.recognised = length + 1;
        return {kept.text, length};
    }

    std::array<entry, 64> entries_{};
    narrow_buffer long_text_;
};

} // namespace zeb5

#endif
