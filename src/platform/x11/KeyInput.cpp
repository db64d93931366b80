#include "platform/x11/KeyInput.h"

#include "platform/x11/OwnWindows.h"

namespace klova::x11 {
namespace {

PhysicalKey physicalKey(xcb_input_device_id_t source, std::uint32_t detail) {
    return {source, static_cast<std::uint8_t>(detail)};
}

} // namespace

void KeyInput::watched(const RawKeyEvent& event, bool press) {
    const PhysicalKey physical = physicalKey(event.sourceid, event.detail);
    const KeyCode code = state_.map.codes[physical.keycode];
    if (state_.tap != nullptr)
        state_.tap->keyboardEscaped(event.full_sequence);
    if (press ? isModifier(code) : state_.held.holds(physical)) {
        if (!press || !focusIsOwn(state_.connection))
            tell(physical, code, press);
        return;
    }
    Event key = state_.event(press ? EventType::keyDown : EventType::keyUp);
    key.keyCode = code;
    state_.monitors.deliver(key);
    state_.observe(key);
}

void KeyInput::frozen(const KeyEvent& event, bool press) {
    if (state_.tap == nullptr) {
        allowEvents(state_.connection, kMasterKeyboard, Allow::replay);
        return;
    }
    if (press && !state_.tap->ownsKeyboard())
        dropStaleKeys(); // nothing moves on while frozen, so the server's answer is exact
    const PhysicalKey physical = physicalKey(event.sourceid, event.detail);
    const KeyCode code = state_.map.codes[physical.keycode];
    if (press ? isModifier(code) : state_.held.holds(physical)) {
        tell(physical, code, press);
        answerModifier(physical, code, press);
    } else {
        answerKey(physical, code, press);
    }
}

void KeyInput::tell(PhysicalKey physical, KeyCode code, bool press) {
    const auto told = press ? state_.held.press(physical, code) : state_.held.release(physical);
    if (told)
        announce(*told);
}

void KeyInput::announce(KeyCode code) {
    Event event = state_.event(EventType::flagsChanged);
    event.keyCode = code;
    state_.monitors.deliver(event);
    if (state_.tap != nullptr && !state_.tap->armed())
        state_.tap->releasePointer();
}

void KeyInput::answerModifier(PhysicalKey physical, KeyCode code, bool press) {
    X11EventTap& tap = *state_.tap;
    const auto isOurs = [&] {
        if (press)
            return tap.ownsKeyboard() || (tap.isActivationKey(code) && tap.takeFrozenKeyboard());
        return tap.hasSwallowedModifier(physical);
    };
    if (!tap.armed() || !isOurs()) {
        // An application that saw the press of a modifier gets its release too.
        tap.replayKey();
        return;
    }
    tap.swallowModifier(physical, press);
}

void KeyInput::answerKey(PhysicalKey physical, KeyCode code, bool press) {
    X11EventTap& tap = *state_.tap;
    if (!tap.armed()) {
        tap.replayKey();
        return;
    }
    if (!tap.ownsKeyboard())
        tap.takeFrozenKeyboard();
    tap.swallowKey(physical, press);
    Event event = state_.event(press ? EventType::keyDown : EventType::keyUp);
    event.keyCode = code;
    tap.show(event);
}

void KeyInput::dropStaleKeys() {
    if (state_.held.empty())
        return;
    const auto keys = own(xcb_query_keymap_reply(
        state_.connection.get(), xcb_query_keymap(state_.connection.get()), nullptr));
    if (!keys)
        return;
    const auto isDown = [&keys](std::uint8_t keycode) {
        return (keys->keys[keycode / 8] >> (keycode % 8) & 1) != 0;
    };
    for (const KeyCode code : state_.held.keepOnly(isDown))
        announce(code);
    if (state_.tap != nullptr)
        state_.tap->dropStaleKeys(isDown);
}

void KeyInput::stick(std::uint8_t modifiers, std::uint8_t keycode) {
    for (std::size_t i = 0; i < stuck_.size(); ++i) {
        const auto modifier = static_cast<std::uint8_t>(1U << i);
        if ((modifiers & modifier) == 0)
            stuck_[i] = 0;
        else if (stuck_[i] == 0)
            stuck_[i] = state_.map.keyFor(modifier, keycode);
    }
}

void KeyInput::followStuckKeys() {
    const bool strokeEnded = state_.tap == nullptr || !state_.tap->hasSwallowedAnything();
    for (std::size_t i = 0; i < stuck_.size(); ++i) {
        auto& told = toldStuck_[i];
        if (told != stuck_[i] && told != 0 && strokeEnded) {
            tell({PhysicalKey::kNoKeyboard, told}, kNoKeyCode, false);
            told = 0;
        }
        if (told != stuck_[i] && told == 0 && !focusIsOwn(state_.connection)) {
            told = stuck_[i];
            tell({PhysicalKey::kNoKeyboard, told}, state_.map.codes[told], true);
        }
    }
}

} // namespace klova::x11
