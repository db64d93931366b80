// Which process a window belongs to.
#pragma once

#include "platform/AccessibilityService.h"
#include "platform/x11/Connection.h"

#include <optional>

namespace klova::x11 {

/// The stand-in for "no application": the bare desktop.
inline constexpr ProcessId kDesktopProcess = 0;

/// The process at the other end of the connection that made the window; absent where the server
/// does not know it or the window is gone.
std::optional<ProcessId> processKnownToServer(Connection& connection, xcb_window_t window);

/// The process at the other end of the connection that made the window, as the server knows it;
/// where it does not, what the window says of itself. A window of another machine that says
/// nothing gets a negative number that all windows of the same connection share.
ProcessId processOf(Connection& connection, xcb_window_t window);

} // namespace klova::x11
