// Whether somebody else holds the keyboard, the pointer or a key of it.
#pragma once

#include "desktop/Display.h"

#include <cstdint>

namespace klova::rig {

/// Found out by trying to grab, and letting go at once where that succeeds.
bool keyboardGrabbed(Display& display);
bool pointerGrabbed(Display& display);

/// Whether another client has a passive XInput2 grab on this key with exactly these modifiers
/// (XCB_MOD_MASK_...) on the root window. Disturbs nothing.
bool keyReserved(Display& display, xcb_keycode_t code, std::uint32_t modifiers);

} // namespace klova::rig
