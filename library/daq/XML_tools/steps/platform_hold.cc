#include "steps/platform_hold.h"

namespace zeb5 {

namespace {

thread_local platform_hold *innermost = nullptr;

} // namespace

platform_hold::platform_hold() : outer_(innermost) { innermost = this; }

platform_hold::~platform_hold() { innermost = outer_; }

void platform_hold::keep_for_thread() {
    if (innermost && !innermost->platform_)
        innermost->platform_.emplace();
}

} // namespace zeb5
