// Waiting for an event, with the time at which it had been read.
#pragma once

#include "desktop/Display.h"

#include <chrono>
#include <functional>
#include <optional>

namespace klova::bench {

using Clock = std::chrono::steady_clock; // CLOCK_MONOTONIC

inline double microseconds(Clock::duration time) {
    return std::chrono::duration<double, std::micro>(time).count();
}

/// Asks for these events (XCB_EVENT_MASK_...) of a window, whoever it belongs to.
void listen(rig::Display& display, xcb_window_t window, std::uint32_t mask);

/// Returns once there is something to read, or at the deadline.
void awaitReadable(rig::Display& display, Clock::time_point deadline);

/// Takes events until one satisfies `predicate`, and tells when that one had been read; nothing
/// where none comes in time.
std::optional<Clock::time_point>
awaitEvent(rig::Display& display, const std::function<bool(const xcb_generic_event_t&)>& predicate,
           Clock::duration patience);

} // namespace klova::bench
