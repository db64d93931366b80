#include "platform/x11/ClickCounter.h"

#include <cmath>

namespace klova::x11 {

std::int64_t ClickCounter::press(std::uint32_t button, xcb_timestamp_t time, Point place,
                                 const ClickLimits& limits) {
    if (state_ > 0 && button == button_ && time == time_)
        return state_;
    const bool again = state_ > 0 && button == button_ && time - time_ <= limits.milliseconds &&
                       std::abs(place.x - place_.x) <= limits.distance &&
                       std::abs(place.y - place_.y) <= limits.distance;
    state_ = again ? state_ + 1 : 1;
    button_ = button;
    time_ = time;
    place_ = place;
    return state_;
}

} // namespace klova::x11
