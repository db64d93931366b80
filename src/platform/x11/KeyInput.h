// Key events, watched and held back.
#pragma once

#include "platform/x11/InputState.h"

#include <array>
#include <functional>

namespace klova::x11 {

class KeyInput {
public:
    explicit KeyInput(InputState& state) : state_(state) {}

    /// A key event on its way to anybody.
    void watched(const RawKeyEvent& event, bool press);

    /// A key event that a grab of ours has frozen; answered here in every case.
    void frozen(const KeyEvent& event, bool press);

    /// A key that changed the modifiers, whether keys are watched or not; `base` are those that
    /// keys hold down now.
    void modifiersChanged(std::uint8_t keycode, bool press, std::uint8_t base);

    /// Watches the keys only while one of them may matter, so that typing wakes nobody: while a
    /// modifier key is down, and on until the button of a drag that was begun meanwhile goes up;
    /// always where a key may arm that is no modifier, and where each event is to be told of.
    void selectKeys(bool buttonDown);

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
    using IsDown = std::function<bool(std::uint8_t keycode)>;

    void tell(PhysicalKey physical, KeyCode code, bool press);
    void announce(KeyCode code);
    void answerModifier(PhysicalKey physical, KeyCode code, bool press);
    void answerKey(PhysicalKey physical, KeyCode code, bool press);
    void drop(const IsDown& isDown);
    void takeStock(std::uint8_t frozen);
    void forgetAllBut(const IsDown& isDown);

    using KeyOfModifier = std::array<std::uint8_t, 8>; // keycodes, 0 where none

    InputState& state_;
    bool watching_ = false;
    std::uint8_t base_ = 0; ///< modifiers that keys held down when they changed last
    KeyOfModifier stuck_{};
    KeyOfModifier toldStuck_{};
};

} // namespace klova::x11
