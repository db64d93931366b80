// The keys that the streams use, by their X keycodes, which name places on the keyboard.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace klova::stress {

using Key = std::uint8_t;
using Button = std::uint8_t;

namespace key {
inline constexpr Key leftControl = 37, leftShift = 50, rightShift = 62, leftAlt = 64, capsLock = 66,
                     numLock = 77, rightControl = 105, rightAlt = 108, leftSuper = 133,
                     rightSuper = 134;
inline constexpr Key q = 24, w = 25, e = 26, y = 29, u = 30, a = 38, s = 39, d = 40, j = 44, k = 45,
                     x = 53, c = 54, n = 57;
inline constexpr Key up = 111, left = 113, right = 114, down = 116;
} // namespace key

/// What setxkbmap is told, and which keys are which by that.
struct Layout {
    std::vector<std::string> arguments;
    Key control = key::leftControl;
    Key caps = key::capsLock;
    bool rightAltIsModifier = true;
};

/// The first is the one that a desktop starts with.
inline const std::vector<Layout>& layouts() {
    static const std::vector<Layout> table = {
        {{"-option", "", "-layout", "us"}},
        {{"-option", "", "-layout", "fr"}, key::leftControl, key::capsLock, false},
        {{"-option", "", "-layout", "us", "-option", "ctrl:swapcaps"},
         key::capsLock,
         key::leftControl}};
    return table;
}

/// The keys that a snap knows, without their letters' pairs.
inline const std::vector<Key>& directionKeys() {
    static const std::vector<Key> keys = {key::left, key::right, key::up, key::down,
                                          key::a,    key::d,     key::w,  key::s};
    return keys;
}

/// Keys that no window manager binds to anything, with whatever modifiers.
inline const std::vector<Key>& idleKeys() {
    static const std::vector<Key> keys = {key::x, key::y, key::k, key::j, key::u};
    return keys;
}

/// What ends the record of a stream: a key that no stream uses.
inline constexpr Key kProbe = key::n;

} // namespace klova::stress
