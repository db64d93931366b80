// Whether somebody else holds the keyboard, the pointer or a key of it.
#pragma once

#include "desktop/Display.h"

#include <cstdint>
#include <string>

namespace klova::rig {

/// Found out by trying to grab, and letting go at once where that succeeds.
bool keyboardGrabbed(Display& display);
bool pointerGrabbed(Display& display);

/// Waits until somebody else holds the keyboard, or where `held` is false until nobody does;
/// returns whether that came true.
bool awaitKeyboardGrab(Display& display, bool held = true);

/// Whether another client has a passive XInput2 grab on this key with exactly these modifiers
/// (XCB_MOD_MASK_...) on the root window. Disturbs nothing.
bool keyReserved(Display& display, xcb_keycode_t code, std::uint32_t modifiers);
/// The same for a button of the mouse.
bool buttonReserved(Display& display, std::uint8_t button, std::uint32_t modifiers);

enum class Protocol { core, xinput2 };

/// Reserves this key with exactly these modifiers for `owner`, where nobody else has it, for as
/// long as its connection lasts.
void reserveKey(Display& owner, xcb_keycode_t code, std::uint32_t modifiers, Protocol protocol);

/// What a person would find stuck: keys and buttons that are down, and whether keyboard or pointer
/// are grabbed. Empty where nothing is.
std::string stuckInput(Display& display);

} // namespace klova::rig
