// What each X keycode means to Klova: its code and the modifiers it sets.
#pragma once

#include "platform/KeyCodes.h"

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace klova::x11 {

class Connection;

/// One reading of the keyboard map. Letters and arrows are taken by their place on the keyboard
/// (the XKB key name), modifiers by their keysym, so that swapped modifier keys keep their meaning.
struct KeyMap {
    std::array<KeyCode, 256> codes{};
    std::map<KeyCode, std::string> legends;    ///< as a Keyboard has them
    std::array<std::uint8_t, 256> modifiers{}; ///< real modifiers, as bits of a modifier mask

    KeyMap() { codes.fill(kNoKeyCode); }
    bool operator==(const KeyMap&) const = default;

    /// The map of the core keyboard as it is now; absent when the server does not tell.
    static std::optional<KeyMap> read(Connection& connection);

    /// The modifiers that any key of that code sets; 0 where it is none in this map.
    std::uint8_t modifiersOf(KeyCode code) const;

    /// The keycode of a modifier key of ours that sets `modifier`: `preferred` where it does, else
    /// the first; 0 where none does.
    std::uint8_t keyFor(std::uint8_t modifier, std::uint8_t preferred) const;
};

} // namespace klova::x11
