#include "counted_lines.h"

#include <algorithm>

std::size_t counted_lines::line() const {
    const auto before_last = std::count(eback(), gptr() == eback() ? gptr() : gptr() - 1, '\n');
    return 1 + lines_before_ + static_cast<std::size_t>(before_last);
}

counted_lines::int_type counted_lines::underflow() {
    const std::size_t kept = gptr() == eback() ? 0 : 1;
    if (kept != 0) {
        lines_before_ = line() - 1;
        block_[0] = last();
    }
    const std::streamsize count =
        source_.sgetn(block_ + kept, static_cast<std::streamsize>(sizeof block_ - kept));
    setg(block_, block_ + kept, block_ + kept + std::max(count, std::streamsize{0}));
    return count > 0 ? traits_type::to_int_type(*gptr()) : traits_type::eof();
}
