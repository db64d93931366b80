// What is active, and everything about it that a gesture needs, asked for in one moment.
#pragma once

#include "platform/x11/ApplicationNames.h"
#include "platform/x11/WindowSnapshot.h"

#include <optional>

namespace klova::x11 {

struct Sighting {
    xcb_window_t active = XCB_NONE;
    bool listed = false; ///< among the managed windows
    std::optional<WindowSnapshot> snapshot;
    ApplicationNames names;
};

/// The requests of one glance. A window has to be named before its properties can be asked for in
/// the same moment as which one is active, so it begins with a guess, which is nearly always right.
class Glance {
public:
    Glance(Connection& connection, xcb_window_t guess);

    /// An answer that nobody took is dropped when it arrives.
    ~Glance();
    Glance(const Glance&) = delete;
    Glance& operator=(const Glance&) = delete;

    xcb_window_t guess() const { return guess_; }

    /// Whether `take` would not have to wait.
    bool answered();

    /// To be called once. Snapshot and names are those of the guess.
    Sighting take(WindowManager& manager);

private:
    Connection& connection_;
    xcb_window_t guess_;
    xcb_get_property_cookie_t active_{};
    xcb_get_property_cookie_t clients_{};
    std::optional<SnapshotRequest> snapshot_;
    std::optional<NamesRequest> names_;
    xcb_get_input_focus_cookie_t last_{}; ///< answered when all others are
    bool lastTaken_ = false;
    bool taken_ = false;
};

/// Whether a glance reads this property, of the root or of the window: a title that changes all the
/// time is none of them.
bool isSeen(const Atoms& atoms, xcb_atom_t property);

/// The window that `_NET_ACTIVE_WINDOW` names, by the answer to a question for it. Some managers
/// make it two items long; the root is no window of anybody's, whoever says so.
xcb_window_t activeOf(Connection& connection, xcb_get_property_cookie_t cookie);

} // namespace klova::x11
