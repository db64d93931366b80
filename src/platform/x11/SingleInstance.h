// One running Klova for each screen of a display, which later ones call instead of running.
#pragma once

#include "platform/x11/Connection.h"

#include <chrono>
#include <functional>
#include <utility>

namespace klova::x11 {

/// Owns the selection `_KLOVA_S<screen>`, which the server takes back from whoever disconnects,
/// also after a crash.
class SingleInstance {
public:
    /// Takes the selection unless somebody has it. `connection` is borrowed and outlives this.
    explicit SingleInstance(Connection& connection);

    /// Gives the selection back.
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    /// False where another instance runs.
    bool acquired() const { return acquired_; }

    /// Its own, never shown.
    xcb_window_t window() const { return window_; }

    /// Tells the instance that runs that the person has started Klova once more.
    void callFirst();

    /// `called` is called in the first instance when another one does so. Not in its first five
    /// seconds: a session with two login entries starts Klova twice, and no person asks for that.
    void setCalled(std::function<void()> called) { called_ = std::move(called); }

    void handle(const xcb_generic_event_t& event);

private:
    using Clock = std::chrono::steady_clock;

    xcb_window_t owner();
    void refuse(const xcb_selection_request_event_t& request);

    Connection& connection_;
    xcb_window_t window_;
    xcb_atom_t selection_;
    bool acquired_ = false;
    Clock::time_point since_ = Clock::now();
    std::function<void()> called_;
};

} // namespace klova::x11
