// Counts successive clicks of one button at one place.
#pragma once

#include "geometry/Frame.h"

#include <cstdint>
#include <xcb/xcb.h>

namespace klova::x11 {

struct ClickLimits {
    std::uint32_t milliseconds = 400;
    double distance = 5; ///< in root pixels, along either axis

    bool operator==(const ClickLimits&) const = default;
};

class ClickCounter {
public:
    /// The click state of a press: 1 for a first click, 2 for the second of a double-click, and
    /// so on. The same press may be reported twice (by its time) and counts once. Server times
    /// are 32 bits of milliseconds and wrap.
    std::int64_t press(std::uint32_t button, xcb_timestamp_t time, Point place,
                       const ClickLimits& limits);

private:
    std::uint32_t button_ = 0;
    xcb_timestamp_t time_ = 0;
    Point place_;
    std::int64_t state_ = 0;
};

} // namespace klova::x11
