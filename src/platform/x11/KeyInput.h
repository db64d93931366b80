// Key events, watched and held back.
#pragma once

#include "platform/x11/InputState.h"

#include <array>

namespace klova::x11 {

class KeyInput {
public:
    explicit KeyInput(InputState& state) : state_(state) {}

    /// A key event on its way to anybody.
    void watched(const RawKeyEvent& event, bool press);

    /// A key event that a grab of ours has frozen; answered here in every case.
    void frozen(const KeyEvent& event, bool press);

    /// Tells the release of modifier keys that are up though nobody said so: a keyboard was
    /// unplugged, the session switched away.
    void dropStaleKeys();

    /// The modifiers that are latched or locked now, and the keycode of the key that did it, or 0.
    void stick(std::uint8_t modifiers, std::uint8_t keycode);

    /// Tells of modifier keys that began or ceased to stick, as of a press and a release: a latched
    /// one is let go together with the key or button that it was meant for. To be called before the
    /// next input event, and before the wait for it.
    void followStuckKeys();

private:
    void tell(PhysicalKey physical, KeyCode code, bool press);
    void announce(KeyCode code);
    void answerModifier(PhysicalKey physical, KeyCode code, bool press);
    void answerKey(PhysicalKey physical, KeyCode code, bool press);

    using KeyOfModifier = std::array<std::uint8_t, 8>; // keycodes, 0 where none

    InputState& state_;
    KeyOfModifier stuck_{};
    KeyOfModifier toldStuck_{};
};

} // namespace klova::x11
