#ifndef LANE_H
#define LANE_H

/// Both ways of reading a document: through the plain lane where it is plain, and through the XML library
/// alone.

#include "steps/plain_lane.h"

enum reading_way { WITH_LANE, WITHOUT_LANE };
inline constexpr reading_way both_ways[] = {WITH_LANE, WITHOUT_LANE};

inline const char *way_name(reading_way way) {
    return way == WITH_LANE ? "with the lane" : "without the lane";
}

/// Readers go this way while it lives.
class way_in_use {
public:
    explicit way_in_use(reading_way way) : before_(zeb5::lane) { zeb5::lane.is_open = way == WITH_LANE; }
    ~way_in_use() { zeb5::lane = before_; }
    way_in_use(const way_in_use &) = delete;
    way_in_use &operator=(const way_in_use &) = delete;

private:
    zeb5::lane_control before_;
};

#endif
