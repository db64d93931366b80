// The connection that a toolkit keeps beside ours.
#pragma once

#include "platform/x11/Atoms.h"

#include <array>
#include <xcb/xcb.h>

namespace klova::x11 {

/// Calls `end`, which does not return, where Xlib would print words of its own and exit with 1.
void setXlibConnectionLost(void (*end)());

/// Keeps the toolkit from being told what goes on in other programs: that the pointer enters and
/// leaves the root window, what the manager notes there (which window is active, which on top), and
/// which buttons are a part of the keyboard's state.
class ToolkitConnection {
public:
    /// `connection` is the toolkit's own; the atoms are the server's, and so anybody's.
    ToolkitConnection(xcb_connection_t* connection, const Atoms& atoms);

    /// Says which of the toolkit's windows has the focus now, if any. Then it is told of the root's
    /// properties, and of what the manager may have changed before. A Qt that sets a selection and
    /// knows no time yet waits without end for such a property of its own to change: what has the
    /// focus must hear of it.
    void focusChanged(xcb_window_t window);

private:
    void announce(xcb_atom_t property, xcb_window_t window);

    xcb_connection_t* connection_;
    std::array<xcb_atom_t, 2> read_; ///< properties that the toolkit reads when they change
    bool hears_ = false;
};

} // namespace klova::x11
