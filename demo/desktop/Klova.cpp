#include "desktop/Klova.h"

#include "desktop/Grabs.h"
#include "desktop/Wait.h"

#include <algorithm>
#include <stdexcept>

namespace klova::rig {
namespace {

Process start(VirtualDesktop& desktop, const std::filesystem::path& binary) {
    const auto settings = desktop.session().preferences();
    if (!std::filesystem::exists(settings))
        writeFile(settings, R"({"isNotFirstTime": true, "activationKeys": [55, 59],
 "LoadsOnStartup": false, "maximizingEnabled": true, "centeringEnabled": true,
 "deminimizeButton": 8})");
    return desktop.launch({binary.string()});
}

} // namespace

Klova::Klova(VirtualDesktop& desktop, const std::filesystem::path& binary)
    : desktop_(desktop), hands_(desktop.server().display()), process_(start(desktop, binary)) {
    const auto super = hands_.keyCode(XKB_KEY_Super_L);
    require(
        desktop.display(), "Klova that holds its keys",
        [&] {
            if (!process_.running())
                throw std::runtime_error("Klova ended at its start: " + process_.output());
            return keyReserved(desktop.display(), super, XCB_MOD_MASK_CONTROL);
        },
        [&] { return process_.output(); });
    wakeKeyboard();
}

/// The first key of a keyboard makes the server tell every program about its map, and window
/// managers take their time over that. No person's second gesture comes so soon.
void Klova::wakeKeyboard() {
    auto& display = desktop_.display();
    for (int i = 0; i < 3; ++i) {
        holdActivationKeys();
        awaitKeyboardGrab(display);
        releaseActivationKeys();
        awaitKeyboardGrab(display, false);
    }
}

void Klova::holdActivationKeys() {
    hands_.press(XKB_KEY_Super_L);
    hands_.press(XKB_KEY_Control_L);
}

void Klova::releaseActivationKeys() {
    hands_.release(XKB_KEY_Control_L);
    hands_.release(XKB_KEY_Super_L);
    hands_.roundTrip();
}

void Klova::snap(const SnapGesture& gesture) {
    hands_.press(gesture.keys);
    hands_.release(gesture.keys);
}

void Klova::click(std::uint8_t button) {
    hands_.click(button);
    hands_.roundTrip();
    awaitPointer("the end of a click", [](const auto& pointer) {
        return (pointer.mask & (XCB_BUTTON_MASK_1 | XCB_BUTTON_MASK_3)) == 0;
    });
}

void Klova::doubleClick(int x, int y) {
    hands_.movePointer(x, y);
    click(1);
    click(1);
}

void Klova::beginDrag(int x, int y) {
    hands_.pressButton(1);
    hands_.movePointer(x, y);
    awaitPointer("the first step of a drag",
                 [&](const auto& pointer) { return pointer.root_x == x && pointer.root_y == y; });
}

void Klova::awaitPointer(const std::string& what,
                         const std::function<bool(const xcb_query_pointer_reply_t&)>& predicate) {
    auto& display = desktop_.display();
    waitUntil(display, what, [&] {
        const auto pointer = owned(xcb_query_pointer_reply(
            display.get(), xcb_query_pointer(display.get(), display.root()), nullptr));
        return pointer != nullptr && predicate(*pointer);
    });
}

std::string Klova::awaitPlace(xcb_window_t window, Place place, const Rect& screen,
                              std::chrono::milliseconds deadline) {
    auto& display = desktop_.display();
    const auto fault = [&] {
        return misplacement(place, screen, sizeLimits(display, window),
                            visibleFrame(display, window));
    };
    waitUntil(
        display, "window in its place", [&] { return fault().empty(); }, fault, deadline);
    return fault();
}

} // namespace klova::rig
