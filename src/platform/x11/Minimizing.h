// Minimizing one window and bringing it back: the newest wish wins.
#pragma once

#include "platform/Deadline.h"
#include "platform/x11/WindowSnapshot.h"

#include <chrono>
#include <optional>
#include <xcb/xcb.h>

namespace klova::x11 {

class Minimizing {
public:
    using Clock = std::chrono::steady_clock;

    Minimizing(Connection& connection, WindowManager& manager, xcb_window_t window);

    void minimize(Clock::time_point now);

    /// Brings the window back, by each way in turn that one manager or another understands, until
    /// it is there. Nothing where it is not minimized; one that its program withdrew is not.
    void restore(const WindowSnapshot& current, xcb_timestamp_t time, Clock::time_point now);

    /// Gives the window the focus; one on its way back is asked for again until it has it.
    void focus(xcb_timestamp_t time);

    /// What is wanted and not yet so.
    std::optional<bool> wanted() const { return wanted_; }

    /// To be called when a state property of the window has changed.
    void onStateChanged(Clock::time_point now);

    Deadline deadline() const;
    void onDeadline(Clock::time_point now);

private:
    bool reached();
    bool isActive();
    void nextStep(Clock::time_point now);

    Connection& connection_;
    WindowManager& manager_;
    xcb_window_t window_;
    std::optional<bool> wanted_;
    bool focusWanted_ = false;
    xcb_timestamp_t time_ = XCB_CURRENT_TIME;
    int step_ = 0;
    Clock::time_point due_;
};

} // namespace klova::x11
