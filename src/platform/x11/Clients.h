// Finding windows: the active one, those of a process, the client around a part of its frame.
#pragma once

#include "platform/x11/Glance.h"
#include "platform/x11/TrackedWindow.h"
#include "platform/x11/WindowManager.h"

#include <memory>
#include <optional>
#include <vector>

namespace klova::x11 {

/// A window together with what it was like when it was found.
struct FoundWindow {
    std::shared_ptr<TrackedWindow> window;
    WindowSnapshot snapshot;
    bool active = false;
};

class Clients {
public:
    Clients(Connection& connection, WindowManager& manager, TrackedWindows& tracked)
        : connection_(connection), manager_(manager), tracked_(tracked) {}

    /// The window that has the focus, if a person would call it a window of a program: shown, in
    /// the manager's list, and no desktop or dock. Right after `frontmost` it answers from the
    /// same moment.
    std::optional<FoundWindow> focused();

    /// Whatever is active, be it a client or not; the desktop without a window where nothing is.
    struct Frontmost {
        ProcessId process = kDesktopProcess;
        ApplicationNames names;
    };
    Frontmost frontmost();

    /// While followed, the active window is known by its events, and `frontmost` and `focused`
    /// have to ask only for what has changed.
    void follow(bool following);
    bool following() const { return following_; }

    /// Asks for what is not known, so that nobody has to wait for it when a gesture comes. To be
    /// called when all events so far have been handled.
    void lookAhead();

    /// To be called with every event, before the tracked windows hear of it.
    void handle(const xcb_generic_event_t& event);

    /// What is known may have changed without an event.
    void forget();

    /// To be called when time has passed: what `frontmost` saw is no longer the present.
    void forgetSighting() { sighting_.reset(); }

    /// All windows of a process, oldest first.
    std::vector<FoundWindow> ofProcess(ProcessId process);

    /// Which window is active, be it a client or not; none without one.
    xcb_window_t active();

    bool isClient(xcb_window_t window);

    /// A client as it is now; absent when it is gone.
    std::optional<FoundWindow> find(xcb_window_t client);

    /// The deepest window at a point of the root, y growing downward; none on the bare root.
    xcb_window_t deepestAt(int x, int y);

    /// One step outward: from inside a client its X parent, from a part of a frame the client it
    /// frames; none for windows that nobody manages.
    xcb_window_t enclosing(xcb_window_t window);

private:
    Sighting look();
    void beginGlance();
    void takeGlance();
    void onConfigure(const xcb_configure_notify_event_t& event);
    Sighting lookWithoutManager();
    std::optional<WindowSnapshot> snapshotOf(xcb_window_t window);
    xcb_window_t inputFocus();
    std::vector<xcb_window_t> ancestors(xcb_window_t window);

    Connection& connection_;
    WindowManager& manager_;
    TrackedWindows& tracked_;
    xcb_window_t lastActive_ = XCB_NONE;
    std::optional<Sighting> sighting_; ///< of `frontmost`, for the `focused` that follows
    bool following_ = false;
    std::optional<Glance> glance_;  ///< ahead of its time, and not yet answered
    std::optional<Sighting> known_; ///< while following: answered, and still true
};

} // namespace klova::x11
