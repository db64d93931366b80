// The connection that a toolkit keeps beside ours.
#pragma once

#include <xcb/xcb.h>

namespace klova::x11 {

/// Calls `end`, which does not return, where Xlib would print words of its own and exit with 1.
void setXlibConnectionLost(void (*end)());

/// Spares the toolkit what it would be told at each click into another program: that the pointer
/// enters and leaves the root window, and which buttons are a part of the keyboard's state. The
/// root's properties stay: Qt waits for one of its own to change when it wants to know the time.
void ignoreForeignClicks(xcb_connection_t* connection);

} // namespace klova::x11
