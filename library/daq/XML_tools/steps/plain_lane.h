#ifndef ZEB5_PLAIN_LANE_H
#define ZEB5_PLAIN_LANE_H

/// The switch of the plain lane: reading documents by the library's own scanner instead of the XML library.

#include <cstddef>

namespace zeb5 {

/// What became of one document.
enum class lane_end {
    FINISHED,    // read by the scanner alone
    LEFT_MIDWAY, // some steps by the scanner, then all by the XML library
    LEFT_AT_ONCE // read by the XML library alone
};

/// For tests: they close the lane to compare with the XML library, count which way documents were read, and
/// have small documents read in many parts. It must not be changed while a reader runs.
struct lane_control {
    bool is_open = true;
    void (*watch)(lane_end) = nullptr;

    std::size_t part = std::size_t{1} << 16; // bytes that are loaded at a time
    std::ptrdiff_t look_ahead = 1 << 16;     // bytes checked behind those that may be scanned; at least 64
    std::ptrdiff_t most_token = 1 << 16;     // bytes of the longest tag, text or comment that is plain
};
extern lane_control lane;

/// Whether the scanner may read documents. It hands out texts as the document has them, so the default
/// transcoder of this locale must leave all ASCII characters as they are. This throws what xml_platform
/// throws.
bool is_lane_open();

void tell_lane_end(lane_end end);

} // namespace zeb5

#endif
