// The windows that were handed out: each one id and generation, and what is under way with it.
#pragma once

#include "platform/x11/Minimizing.h"
#include "platform/x11/Placement.h"
#include "platform/x11/Processes.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <unordered_map>

namespace klova::x11 {

class X11Screens;

/// One generation of a window. Window ids are used again: once gone it stays gone, and a new
/// window of the same id is tracked anew.
class TrackedWindow {
public:
    TrackedWindow(Connection& connection, WindowManager& manager, X11Screens& screens,
                  xcb_window_t window);

    xcb_window_t id() const { return id_; }
    ProcessId process() const { return process_; }
    bool gone() const { return gone_; }
    void setGone() { gone_ = true; }

    Placement placement;
    Minimizing minimizing;

    /// Hears of property changes only while something is under way or a gesture is to be
    /// expected: a window's ordinary life must not wake us.
    void listen();
    void setAwaited(bool awaited) { awaited_ = awaited; }

    /// Whether nothing is under way or to be expected.
    bool idle() const { return !awaited_ && !placement.busy() && !minimizing.wanted(); }

private:
    Connection& connection_;
    xcb_window_t id_;
    ProcessId process_;
    bool gone_ = false;
    bool awaited_ = false;
    bool listening_ = false;
};

class TrackedWindows {
public:
    using Clock = std::chrono::steady_clock;

    TrackedWindows(Connection& connection, WindowManager& manager, X11Screens& screens)
        : connection_(connection), manager_(manager), screens_(screens) {}

    /// The window as it is tracked now. To be called for windows that were just seen alive.
    std::shared_ptr<TrackedWindow> track(xcb_window_t window);

    /// To be called before a window is looked at that may be tracked then: what is tracked is
    /// never destroyed unheard.
    void watch(xcb_window_t window);

    /// The one window that a gesture is expected to act upon, tracked yet or not, or none. Its
    /// property changes are heard as well.
    void await(xcb_window_t window);
    xcb_window_t awaited() const { return awaited_; }

    void handle(const xcb_generic_event_t& event);
    void flush(Clock::time_point now);
    Deadline deadline() const;
    void onDeadline(Clock::time_point now);

    /// Hears no more of windows that nobody holds and that nothing is under way with.
    void forgetIdle();

private:
    TrackedWindow* find(xcb_window_t window);
    void ignore(xcb_window_t window);
    void onProperty(const xcb_property_notify_event_t& event);

    Connection& connection_;
    WindowManager& manager_;
    X11Screens& screens_;
    xcb_window_t awaited_ = XCB_NONE;
    std::unordered_map<xcb_window_t, std::shared_ptr<TrackedWindow>> windows_;
};

} // namespace klova::x11
