#ifndef ZEB5_PARSE_METER_H
#define ZEB5_PARSE_METER_H

/// Adds up what a document makes a parser do, and refuses it when that is too much for its length.

#include "limits/limits.h"

namespace zeb5 {

class parse_meter {
public:
    parse_meter() = default;
    virtual ~parse_meter() = default;
    parse_meter(const parse_meter &) = delete;
    parse_meter &operator=(const parse_meter &) = delete;

    /// So many bytes of the document itself were read.
    void count_bytes(std::size_t bytes) { length_ += bytes; }

    void spend(price more) {
        work_ += more;
        if (work_ > free_work && work_ / work_per_byte > length_)
            refuse(u"This document takes more work than its length allows");
    }

    /// The parser takes so many bytes of memory more.
    void take(std::size_t bytes) {
        held_ += bytes;
        if (held_ > free_memory && held_ / memory_per_byte > length_)
            refuse(u"This document takes more memory than its length allows");
        spend(bytes / bytes_per_price);
    }

    void give_back(std::size_t bytes) { held_ -= bytes; }

protected:
    /// A document begins. What the parser holds it goes on to hold.
    void begin() {
        work_ = 0;
        length_ = 0;
    }

    /// Reports the document as beyond a limit, which ends its parse.
    virtual void refuse(const char16_t *reason) = 0;

private:
    price work_ = 0;
    std::size_t length_ = 0; // of the document, as far as it was read
    std::size_t held_ = 0;
};

} // namespace zeb5

#endif
