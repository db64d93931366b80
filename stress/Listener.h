// A client that hears everything: keys wherever the focus is, buttons on its window or its pad.
#pragma once

#include "desktop/Display.h"

#include <cstdint>
#include <vector>

namespace klova::stress {

/// `type` is XCB_KEY_PRESS to XCB_BUTTON_RELEASE, `detail` a keycode or a button number.
struct Heard {
    std::uint8_t type = 0;
    std::uint8_t detail = 0;
    xcb_timestamp_t time = 0;
};

class Listener {
public:
    explicit Listener(const std::string& display);

    /// A plain window under management.
    xcb_window_t window() const { return window_; }
    void takeFocus();

    /// Puts an invisible pad above all windows, which then gets every click, or takes it away.
    void showPad(bool shown);

    /// Gives ear to the windows that have come since the last call: keys go to the one that has the
    /// focus and to nobody above it. To be called before each key.
    void attend();

    /// Whether the server repeats keys that are held, as it does not at first. Not while this has
    /// grabbed the keyboard: repetitions are not told from presses then.
    void repeatKeys(bool repeats);

    /// Everything heard since the last call, in order; a key that repeats counts once.
    std::vector<Heard> take();

    /// As an open menu does, or a drag. False where that is not to be had within a second: while
    /// a device is frozen or somebody else's.
    bool grabKeyboard();
    bool grabPointer();
    void freeKeyboard();
    void freePointer();

private:
    void listenTo(xcb_window_t window);
    void listenToTree(xcb_window_t top);
    void makeWindow();
    void note(const xcb_generic_event_t& event);
    void makePad();

    rig::Display display_;
    xcb_window_t window_ = XCB_NONE;
    xcb_window_t overlay_ = XCB_NONE;
    std::vector<Heard> record_;
};

} // namespace klova::stress
