// Who manages the windows of this screen, and what that program says it can do.
#pragma once

#include "platform/x11/Connection.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace klova::x11 {

class WindowManager {
public:
    explicit WindowManager(Connection& connection) : connection_(connection) {}

    /// Window managers come and go; what was learnt is forgotten when one does.
    void handle(const xcb_generic_event_t& event);

    /// To be called when all events so far have been handled. The root window's properties, which
    /// change whenever a window is raised, are told of only while watched closely or while there
    /// is no manager, whose coming shows in them; its going shows in its own window. Returns
    /// whether the manager is another one than at the last call.
    bool watch(bool closely);

    bool present() { return facts().checkWindow != XCB_NONE; }
    /// The manager's own window, which some name as the active one when no other is.
    xcb_window_t checkWindow() { return facts().checkWindow; }
    bool movesWindows() { return facts().movesWindows; }
    bool publishesDecoration() { return facts().publishesDecoration; }

    /// The managed windows, oldest first. Without a manager: the visible top-level windows that
    /// do not ask to be left alone.
    std::vector<xcb_window_t> clients();

    /// Asks for one or two states to be taken off a window.
    void removeState(xcb_window_t window, xcb_atom_t first, xcb_atom_t second = XCB_ATOM_NONE);

private:
    struct Facts {
        xcb_window_t checkWindow = XCB_NONE;
        bool movesWindows = false;
        bool publishesDecoration = false;
    };
    const Facts& facts();
    Facts read();
    void listen(bool wanted);
    std::vector<xcb_window_t> visibleTopLevels();

    Connection& connection_;
    std::optional<Facts> facts_;
    xcb_window_t seen_ = XCB_NONE; ///< the manager of the last call of `watch`
    bool listening_ = false;
};

} // namespace klova::x11
