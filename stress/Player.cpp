#include "Player.h"

#include "Devices.h"
#include "desktop/Grabs.h"
#include "desktop/ManagerBarrier.h"
#include "desktop/Monitors.h"
#include "desktop/Wait.h"

#include <chrono>
#include <stdexcept>
#include <thread>

namespace klova::stress {

bool Player::play(const Step& step) {
    if (step.act != Act::pressKey && step.act != Act::releaseKey) {
        act(step);
        return false;
    }
    hands_.awaitTurn();
    const auto before = focus(desktop_.display());
    act(step);
    hands_.roundTrip();
    return before == XCB_NONE || focus(desktop_.display()) != before;
}

void Player::act(const Step& step) {
    switch (step.act) {
    case Act::pressKey:
    case Act::pressButton:
        return press(step);
    case Act::releaseKey:
    case Act::releaseButton:
        return release(step);
    case Act::movePointer:
        return hands_.movePointer(step.detail, step.other);
    case Act::rest:
        return std::this_thread::sleep_for(std::chrono::milliseconds(step.detail));
    case Act::repeatKeys:
        hands_.roundTrip();
        return listener_.repeatKeys(step.detail == 1);
    case Act::grabKeyboard:
    case Act::grabPointer:
        return grab(step);
    case Act::freeKeyboard:
    case Act::freePointer:
        return free(step);
    case Act::awaitKeyboard:
        return rig::require(desktop_.display(), "keyboard that Klova holds again",
                            [this] { return rig::keyboardGrabbed(desktop_.display()); });
    case Act::splitMonitors:
    case Act::joinMonitors:
    case Act::changeLayout:
    case Act::replaceManager:
        return changeDesktop(step);
    default:
        return guests_.play(step);
    }
}

/// What is frozen goes on in a moment; but the server drops a release and the press after it where
/// both come before that.
void Player::press(const Step& step) {
    auto& display = desktop_.display();
    hands_.roundTrip();
    hands_.awaitTurn();
    listener_.attend();
    if (step.act == Act::pressKey) {
        rig::require(display, "end of an earlier press",
                     [&] { return !keyIsDown(display, step.detail); });
        hands_.pressCode(static_cast<xcb_keycode_t>(step.detail));
    } else {
        rig::require(display, "end of an earlier click",
                     [&] { return (pointerState(display) & buttonBit(step.detail)) == 0; });
        hands_.pressButton(static_cast<std::uint8_t>(step.detail));
    }
}

void Player::release(const Step& step) {
    hands_.awaitTurn();
    listener_.attend();
    if (step.act == Act::releaseKey)
        hands_.releaseCode(static_cast<xcb_keycode_t>(step.detail));
    else
        hands_.releaseButton(static_cast<std::uint8_t>(step.detail));
}

void Player::grab(const Step& step) {
    hands_.roundTrip();
    const bool done =
        step.act == Act::grabKeyboard ? listener_.grabKeyboard() : listener_.grabPointer();
    if (!done)
        throw std::runtime_error("another program is refused a grab");
}

void Player::free(const Step& step) {
    hands_.roundTrip();
    step.act == Act::freeKeyboard ? listener_.freeKeyboard() : listener_.freePointer();
}

void Player::changeDesktop(const Step& step) {
    switch (step.act) {
    case Act::splitMonitors:
        rig::splitMonitors(desktop_.display());
        return;
    case Act::joinMonitors:
        return rig::setMonitors(desktop_.display(), {desktop_.server().screen()});
    case Act::changeLayout:
        return changeLayout(step.detail);
    default:
        return desktop_.replaceManager();
    }
}

void Player::changeLayout(int layout) {
    std::vector<std::string> command = {"setxkbmap"};
    const auto& arguments = layouts()[static_cast<std::size_t>(layout)].arguments;
    command.insert(command.end(), arguments.begin(), arguments.end());
    if (desktop_.launch(command).waitExit(rig::kDeadline) != 0)
        throw std::runtime_error("setxkbmap fails");
}

} // namespace klova::stress
