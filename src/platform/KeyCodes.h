// Klova's virtual key codes: positions for letters and arrows, meanings for modifiers.
#pragma once

#include <cstdint>

namespace klova {

using KeyCode = std::uint16_t;

/// What an event carries for a key that has no code. Never 0, which is the letter A.
inline constexpr KeyCode kNoKeyCode = 0xFFFF;

namespace key {
inline constexpr KeyCode a = 0, s = 1, d = 2, c = 8, q = 12, w = 13, e = 14, t = 17;
inline constexpr KeyCode rightCommand = 54, command = 55, shift = 56, option = 58, control = 59;
inline constexpr KeyCode rightShift = 60, rightOption = 61, rightControl = 62, fn = 63;
inline constexpr KeyCode leftArrow = 123, rightArrow = 124, downArrow = 125, upArrow = 126;
} // namespace key

/// Whether `code` is one of the nine modifier keys (54 to 63, without 57, which is Caps Lock).
constexpr bool isModifier(KeyCode code) {
    return code >= key::rightCommand && code <= key::fn && code != 57;
}

} // namespace klova
