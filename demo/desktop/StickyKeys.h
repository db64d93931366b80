// Modifiers that stay down without a hand on them (XKB).
#pragma once

#include "desktop/Display.h"

#include <cstdint>

namespace klova::rig {

/// With sticky keys a modifier key that is tapped stays down until the next key or click has gone
/// by (latched), and one that is tapped twice until its next tap (locked).
void setStickyKeys(Display& display, bool on);

/// Locks these modifiers (XCB_MOD_MASK_...), as an on-screen keyboard does, and unlocks all others.
void lockModifiers(Display& display, std::uint8_t modifiers);

} // namespace klova::rig
