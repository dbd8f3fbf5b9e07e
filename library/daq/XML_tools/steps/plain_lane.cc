#include "steps/plain_lane.h"

#include "steps/local_code.h"

namespace zeb5 {

lane_control lane;

bool is_lane_open() { return lane.is_open && local_code_keeps_ascii(); }

void tell_lane_end(lane_end end) {
    if (lane.watch)
        lane.watch(end);
}

} // namespace zeb5
