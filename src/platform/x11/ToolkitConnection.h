// The connection that a toolkit keeps beside ours.
#pragma once

#include <xcb/xcb.h>

namespace klova::x11 {

/// Calls `end`, which does not return, where Xlib would print words of its own and exit with 1.
void setXlibConnectionLost(void (*end)());

/// Spares the toolkit what it would be told at each click into another program: that the pointer
/// enters and leaves the root window, which window is active now, and which buttons are a part of
/// the keyboard's state.
void ignoreForeignClicks(xcb_connection_t* connection);

/// Has the toolkit told of the root's properties while a window of its own has the focus,
/// `focused`, and no longer when that is none. What the manager may have changed meanwhile is
/// announced once more. A Qt that sets a selection and knows no time yet waits without end for such
/// a property of its own to change: what has the focus must hear of it.
void hearRootProperties(xcb_connection_t* connection, xcb_window_t focused);

} // namespace klova::x11
