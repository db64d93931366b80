// What the server says of keys and buttons.
#pragma once

#include "desktop/Display.h"

#include <cstdint>
#include <vector>

namespace klova::stress {

/// The keycodes that are down.
std::vector<int> keysDown(rig::Display& display);
bool keyIsDown(rig::Display& display, int keycode);

/// The window that keys go to.
xcb_window_t focus(rig::Display& display);

/// The pointer's state: buttons and modifiers, as in an event.
std::uint32_t pointerState(rig::Display& display);
inline constexpr std::uint32_t kAnyButton = 0x1F00;
inline std::uint32_t buttonBit(int button) { return 0x80U << button; }

} // namespace klova::stress
