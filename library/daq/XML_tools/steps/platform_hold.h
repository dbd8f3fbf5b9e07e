#ifndef ZEB5_PLATFORM_HOLD_H
#define ZEB5_PLATFORM_HOLD_H

/// Keeping the XML platform up from one reader to the next, once one of them needs it.

#include <optional>

#include "xml_platform.h"

namespace zeb5 {

/// While it lives, the platform stays up that a reader of the same thread brings up.
class platform_hold {
public:
    platform_hold();
    ~platform_hold();
    platform_hold(const platform_hold &) = delete;
    platform_hold &operator=(const platform_hold &) = delete;

    /// Called by whoever has brought the platform up.
    static void keep_for_thread();

private:
    platform_hold *outer_;
    std::optional<xml_platform> platform_;
};

} // namespace zeb5

#endif
