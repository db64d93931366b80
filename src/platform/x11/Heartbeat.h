// Tells the guard, in another process, that events are being answered while they are held back.
#pragma once

#include "platform/Deadline.h"
#include "platform/UniqueDescriptor.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <utility>
#include <xcb/xcb.h>

namespace klova::x11 {

/// What the guard is told, in one piece.
struct Beat {
    xcb_window_t window = XCB_WINDOW_NONE; ///< one of the connection that holds the grabs
    xcb_timestamp_t answered = 0;          ///< of the newest grab of the keyboard that was noticed
    std::uint32_t holding = 0;             ///< 1 while the keyboard is ours, else 0
};

class Heartbeat {
public:
    using Clock = std::chrono::steady_clock;
    static constexpr std::chrono::milliseconds kInterval{400};

    /// Nobody listens.
    Heartbeat() = default;

    /// `beats` is the guard's pipe, `window` any window of the connection that holds the grabs.
    Heartbeat(UniqueDescriptor beats, xcb_window_t window)
        : beats_(std::move(beats)), next_{.window = window} {}

    /// The keyboard was grabbed, by whomever: the guard wants to know that somebody is awake.
    void noticeGrab(xcb_timestamp_t time) { next_.answered = time; }

    /// Tells the guard what is new, and while the keyboard is held that all is well.
    void beat(bool holding);

    /// When the next beat is due even if nothing happens; absent while nothing is held.
    Deadline deadline() const { return due_; }

private:
    void goOnAlone();

    UniqueDescriptor beats_;
    Beat next_;
    std::optional<Beat> last_; ///< that was sent
    std::optional<Clock::time_point> due_;
};

} // namespace klova::x11
