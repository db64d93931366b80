// Giving a window the focus.
#pragma once

#include "platform/x11/WindowManager.h"

#include <xcb/xcb.h>

namespace klova::x11 {

/// Asks the manager to activate `window`; without a manager it gets the input focus. `time` is
/// that of the input event behind it: managers distrust requests that have none.
void activate(Connection& connection, WindowManager& manager, xcb_window_t window,
              xcb_timestamp_t time);

} // namespace klova::x11
