#ifndef ZEB5_PLATFORM_HOLD_H
#define ZEB5_PLATFORM_HOLD_H

/// Keeps the XML platform up from one reader to the next, once one of them needs it.

#include <optional>

#include "xml_platform.h"

namespace zeb5 {

/// While an object lives, the platform stays up once a reader of the same thread has started it.
class platform_hold {
public:
    platform_hold();
    ~platform_hold();
    platform_hold(const platform_hold &) = delete;
    platform_hold &operator=(const platform_hold &) = delete;

    /// Must be called by code that has started the platform.
    static void keep_for_thread();

private:
    platform_hold *outer_;
    std::optional<xml_platform> platform_;
};

} // namespace zeb5

#endif
