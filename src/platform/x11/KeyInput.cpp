#include "platform/x11/KeyInput.h"

#include "platform/Diagnostics.h"
#include "platform/x11/OwnWindows.h"

#include <bitset>
#include <optional>
#include <utility>
#include <vector>

namespace klova::x11 {
namespace {

PhysicalKey physicalKey(xcb_input_device_id_t source, std::uint32_t detail) {
    return {source, static_cast<std::uint8_t>(detail)};
}

void selectRawKeys(Connection& connection, bool wanted) {
    constexpr std::uint32_t keys =
        XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE;
    selectXInputEvents(connection, kMasterKeyboard,
                       XCB_INPUT_XI_EVENT_MASK_FOCUS_IN | (wanted ? keys : 0));
}

using Keycodes = std::bitset<256>;

/// The keys that are down; absent where the server does not tell.
std::optional<Keycodes> readKeymap(Connection& connection) {
    const auto reply =
        own(xcb_query_keymap_reply(connection.get(), xcb_query_keymap(connection.get()), nullptr));
    if (!reply)
        return std::nullopt;
    Keycodes down;
    for (std::size_t keycode = 0; keycode < down.size(); ++keycode)
        down[keycode] = (reply->keys[keycode / 8] >> (keycode % 8) & 1) != 0;
    return down;
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

void KeyInput::modifiersChanged(std::uint8_t keycode, bool press, std::uint8_t base) {
    const int gone = std::exchange(base_, base) & ~base;
    forgetAllBut([&](std::uint8_t key) {
        const auto modifiers = state_.map.modifiers[key];
        return key == keycode ? press : (modifiers & gone) == 0 || (modifiers & base) != 0;
    });
    const PhysicalKey physical{PhysicalKey::kAnyKeyboard, keycode};
    const KeyCode code = state_.map.codes[keycode];
    if (press && isModifier(code) && !state_.held.holds(physical) && !focusIsOwn(state_.connection))
        tell(physical, code, true);
}

void KeyInput::selectKeys(bool buttonDown) {
    const bool foreseen = state_.tap != nullptr && state_.tap->foreseesArming();
    const bool wanted = !foreseen || state_.armed() || !state_.held.empty() ||
                        (watching_ && buttonDown) || diagnosticsAreRead();
    if (std::exchange(watching_, wanted) != wanted)
        selectRawKeys(state_.connection, wanted);
}

void KeyInput::frozen(const KeyEvent& event, bool press) {
    if (state_.tap == nullptr) {
        allowEvents(state_.connection, kMasterKeyboard, Allow::replay);
        return;
    }
    const PhysicalKey physical = physicalKey(event.sourceid, event.detail);
    if (press && !state_.tap->ownsKeyboard() && (event.mods.base != 0 || !state_.held.empty()))
        takeStock(physical.keycode);
    const KeyCode code = state_.map.codes[physical.keycode];
    const auto releasesModifier = [&] {
        return state_.held.holds(physical) ||
               (isModifier(code) && !state_.tap->hasSwallowedKey(physical));
    };
    if (press ? isModifier(code) : releasesModifier()) {
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
    if (!state_.held.empty())
        if (const auto down = readKeymap(state_.connection))
            drop([&](auto keycode) { return (*down)[keycode]; });
}

void KeyInput::drop(const IsDown& isDown) {
    forgetAllBut(isDown);
    if (state_.tap != nullptr)
        state_.tap->dropStaleKeys(isDown);
}

/// While a key is frozen nothing moves on, and the server's account is exact. It alone knows of a
/// key that went down before the keys were watched, and changed no modifier.
void KeyInput::takeStock(std::uint8_t frozen) {
    const auto down = readKeymap(state_.connection);
    if (!down)
        return;
    drop([&](auto keycode) { return (*down)[keycode]; });
    std::vector<PhysicalKey> missed;
    for (std::size_t keycode = 0; keycode < down->size(); ++keycode) {
        const PhysicalKey key{PhysicalKey::kAnyKeyboard, static_cast<std::uint8_t>(keycode)};
        if ((*down)[keycode] && keycode != frozen && isModifier(state_.map.codes[keycode]) &&
            !state_.held.holds(key))
            missed.push_back(key);
    }
    if (missed.empty() || focusIsOwn(state_.connection))
        return;
    for (const PhysicalKey key : missed)
        tell(key, state_.map.codes[key.keycode], true);
}

void KeyInput::forgetAllBut(const IsDown& isDown) {
    for (const KeyCode code : state_.held.keepOnly(isDown))
        announce(code);
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
