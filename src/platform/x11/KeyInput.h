// Key events, watched and held back.
#pragma once

#include "platform/x11/InputState.h"

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

private:
    void tell(PhysicalKey physical, KeyCode code, bool press);
    void announce(KeyCode code);
    void answerModifier(PhysicalKey physical, KeyCode code, bool press);
    void answerKey(PhysicalKey physical, KeyCode code, bool press);

    InputState& state_;
};

} // namespace klova::x11
