// Key presses, clicks and pointer motion as if a person made them (XTEST).
#pragma once

#include "desktop/Display.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <string>
#include <vector>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace klova::rig {

/// Keys are named by keysym (XKB_KEY_Left), buttons by number. Every event is on its way to the
/// server when the call returns.
class Injector {
public:
    explicit Injector(const std::string& display);

    /// Throws std::runtime_error where no key of the keyboard has this keysym on its first level.
    xcb_keycode_t keyCode(xcb_keysym_t symbol);

    /// The same hands on another keyboard, by the name that the server gives it. Throws
    /// std::runtime_error where there is none.
    void useKeyboard(const std::string& name);

    /// Takes the keyboard in use away as if it were unplugged, or puts it back.
    void setPlugged(bool plugged);

    void press(xcb_keysym_t symbol) { pressCode(keyCode(symbol)); }
    void release(xcb_keysym_t symbol) { releaseCode(keyCode(symbol)); }
    void tap(xcb_keysym_t symbol);
    /// One after the other, released in the order in which they were pressed.
    void press(const std::vector<xcb_keysym_t>& symbols);
    void release(const std::vector<xcb_keysym_t>& symbols);
    /// Taps `symbol` while the others are held.
    void chord(const std::vector<xcb_keysym_t>& held, xcb_keysym_t symbol);
    void pressCode(xcb_keycode_t code) { sendKey(XCB_KEY_PRESS, code); }
    void releaseCode(xcb_keycode_t code) { sendKey(XCB_KEY_RELEASE, code); }

    void pressButton(std::uint8_t button) { send(XCB_BUTTON_PRESS, button, 0, 0); }
    void releaseButton(std::uint8_t button) { send(XCB_BUTTON_RELEASE, button, 0, 0); }
    void click(std::uint8_t button);

    /// What the buttons count as, from the first on: those of this mouse, or of all together (which
    /// comes on top).
    static constexpr std::uint8_t kButtons = 10;
    using ButtonMap = std::array<std::uint8_t, kButtons>;
    void mapButtons(const ButtonMap& buttons);
    void mapAllButtons(const ButtonMap& buttons);

    /// Puts the pointer at a place in root pixels, y growing downward.
    void movePointer(int x, int y);

    /// The time that passes between two events; zero at first. Where $KLOVA_PACE is a number it
    /// is that many times as long: a sanitizer slows the program, and no hand grows quicker by it.
    void setSpacing(std::chrono::microseconds spacing);

    /// Returns when the spacing lets the next event be sent at once.
    void awaitTurn();

    /// Returns once the server has dealt with every event sent so far.
    void roundTrip() { display_.roundTrip(); }

private:
    using Clock = std::chrono::steady_clock;
    void send(std::uint8_t type, std::uint8_t detail, int x, int y, std::uint8_t device = 0);
    void sendKey(std::uint8_t type, xcb_keycode_t code);

    Display display_;
    std::uint8_t keyboard_ = 0;       // XTEST's own
    std::uint8_t keyboardEvents_ = 0; // what is added to the types of key events
    std::chrono::microseconds spacing_{0};
    Clock::time_point next_{};
};

} // namespace klova::rig
