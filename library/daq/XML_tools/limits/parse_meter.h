#ifndef ZEB5_PARSE_METER_H
#define ZEB5_PARSE_METER_H

/// Adds up what a document makes a parser do, and refuses it when that is too much for its length.

#include <utility>

#include "limits/hashed_names.h"
#include "limits/limits.h"

namespace zeb5 {

class parse_meter {
public:
    parse_meter() = default;
    virtual ~parse_meter() = default;
    parse_meter(const parse_meter &) = delete;
    parse_meter &operator=(const parse_meter &) = delete;

    /// Another document begins: it is charged for what comes from here on.
    void begin() {
        is_charged_ = false;
        work_ = 0;
        length_ = 0;
        names = document_names();
    }

    /// Of the document.
    document_names names;

    /// So many bytes of the document itself were read.
    void count_bytes(std::size_t bytes) { length_ += bytes; }

    /// Only where the parser copes with a refusal: in its callbacks, and where it expands an entity. In
    /// between it may be in the middle of putting one text in the place of another.
    void spend(price more) {
        work_ += more;
        if (work_ > free_work && work_ / work_per_byte > length_)
            refuse(u"This document takes more work than its length allows");
        if (held_ > held_before_ + free_memory && (held_ - held_before_) / memory_per_byte > length_)
            refuse(u"This document takes more memory than its length allows");
    }

    /// The parser takes so many bytes of memory more.
    void take(std::size_t bytes) {
        held_ += bytes;
        work_ += bytes / bytes_per_price;
    }

    void give_back(std::size_t bytes) { held_ -= bytes; }

    /// Refuses the document, once, if it may be refused now.
    void refuse(const char16_t *reason) {
        if (std::exchange(is_charged_, false))
            end_with(reason);
    }

protected:
    /// From here on, and until the document ends, the parser copes with a refusal.
    void charge() {
        is_charged_ = true;
        held_before_ = held_;
    }
    void stop_charging() { is_charged_ = false; }

    /// Reports the document as beyond a limit, which ends its parse.
    virtual void end_with(const char16_t *reason) = 0;

private:
    bool is_charged_ = false;
    price work_ = 0;
    std::size_t length_ = 0;      // of the document, as far as it was read
    std::size_t held_ = 0;        // bytes of memory
    std::size_t held_before_ = 0; // of documents before
};

} // namespace zeb5

#endif
