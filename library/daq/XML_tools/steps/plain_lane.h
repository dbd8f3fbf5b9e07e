#ifndef ZEB5_PLAIN_LANE_H
#define ZEB5_PLAIN_LANE_H

/// Whether documents are read by the library's own scanner at all: the plain lane, beside the way through the
/// XML library.

namespace zeb5 {

/// What became of one document.
enum class lane_end {
    FINISHED,    // read by the scanner alone
    LEFT_MIDWAY, // some steps by the scanner, then all by the XML library
    LEFT_AT_ONCE // read by the XML library alone
};

/// For tests: they close the lane to see the XML library do the same, and count what became of documents.
/// Nobody may change this while a reader runs.
struct lane_control {
    bool is_open = true;
    void (*watch)(lane_end) = nullptr;
};
extern lane_control lane;

/// Whether the scanner may read: its texts are as the document has them, so the default transcoder of this
/// locale must keep all ASCII characters as they are. It is asked once for each local code, and the platform
/// comes up for that once; this throws what xml_platform throws.
bool is_lane_open();

void tell_lane_end(lane_end end);

} // namespace zeb5

#endif
