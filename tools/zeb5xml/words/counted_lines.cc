#include "words/counted_lines.h"

#include <algorithm>

std::size_t counted_lines::line() {
    const char *const last = gptr() == eback() ? gptr() : gptr() - 1;
    line_ends_ += static_cast<std::size_t>(std::count(counted_, last, '\n'));
    counted_ = last;
    return 1 + line_ends_;
}

counted_lines::int_type counted_lines::underflow() {
    const std::size_t kept = gptr() == eback() ? 0 : 1;
    if (kept != 0) {
        line(); // counts up to the byte that is kept
        block_[0] = last();
    }
    counted_ = block_;
    const std::streamsize count =
        source_.sgetn(block_ + kept, static_cast<std::streamsize>(sizeof block_ - kept));
    setg(block_, block_ + kept, block_ + kept + std::max(count, std::streamsize{0}));
    return count > 0 ? traits_type::to_int_type(*gptr()) : traits_type::eof();
}
