// Klova's desktop on X11: one connection, the services on it, and the events that drive them.
#pragma once

#include "platform/x11/Connection.h"

#include <chrono>
#include <memory>
#include <optional>

namespace klova {
class AccessibilityService;
class EventMonitors;
class EventTapService;
class Screens;
class Workspace;
} // namespace klova

namespace klova::x11 {

class InputBridge;
class X11AccessibilityService;
class X11Screens;
class X11Workspace;

class X11Desktop {
public:
    using Clock = std::chrono::steady_clock;

    /// Throws DisplayUnreachable.
    explicit X11Desktop(const char* display = nullptr);
    ~X11Desktop();

    Connection& connection() { return connection_; }
    AccessibilityService& accessibility();
    Workspace& workspace();
    Screens& screens();
    EventTapService& taps();
    EventMonitors& monitors();

    /// To be called whenever the descriptor is readable, and before each wait for it: events may
    /// sit in the library's queue while the descriptor is silent. Returns false once the server
    /// is gone.
    bool dispatch();

    /// When `dispatch` has to be called even if nothing arrives.
    std::optional<Clock::time_point> deadline() const;

    int descriptor() const { return connection_.descriptor(); }

private:
    Connection connection_;
    std::unique_ptr<X11Screens> screens_;
    std::unique_ptr<X11AccessibilityService> accessibility_;
    std::unique_ptr<X11Workspace> workspace_;
    std::unique_ptr<InputBridge> input_;
};

} // namespace klova::x11
