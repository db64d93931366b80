#include "desktop/Grabs.h"

#include "desktop/Wait.h"

#include <xcb/xinput.h>

namespace klova::rig {
namespace {

constexpr std::uint16_t kMasters = XCB_INPUT_DEVICE_ALL_MASTER;

xcb_input_xi_passive_grab_device_cookie_t ask(Display& display, xcb_input_grab_type_t type,
                                              std::uint32_t detail, std::uint32_t modifiers) {
    owned(xcb_input_xi_query_version_reply(
        display.get(), xcb_input_xi_query_version(display.get(), 2, 2), nullptr));
    const std::uint32_t mask = type == XCB_INPUT_GRAB_TYPE_KEYCODE
                                   ? XCB_INPUT_XI_EVENT_MASK_KEY_PRESS
                                   : XCB_INPUT_XI_EVENT_MASK_BUTTON_PRESS;
    return xcb_input_xi_passive_grab_device(
        display.get(), XCB_CURRENT_TIME, display.root(), XCB_NONE, detail, kMasters, 1, 1,
        static_cast<std::uint8_t>(type), XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_INPUT_GRAB_MODE_22_ASYNC,
        XCB_INPUT_GRAB_OWNER_NO_OWNER, &mask, &modifiers);
}

/// The grab and its end are asked for at once, so that nobody else's grab is refused meanwhile.
bool reserved(Display& display, xcb_input_grab_type_t type, std::uint32_t detail,
              std::uint32_t modifiers) {
    const auto grab = ask(display, type, detail, modifiers);
    xcb_input_xi_passive_ungrab_device(display.get(), display.root(), detail, kMasters, 1,
                                       static_cast<std::uint8_t>(type), &modifiers);
    const auto reply = owned(xcb_input_xi_passive_grab_device_reply(display.get(), grab, nullptr));
    return !reply || reply->num_modifiers != 0;
}

} // namespace

bool keyboardGrabbed(Display& display) {
    const auto reply = owned(xcb_grab_keyboard_reply(
        display.get(),
        xcb_grab_keyboard(display.get(), 0, display.root(), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC,
                          XCB_GRAB_MODE_ASYNC),
        nullptr));
    const bool ours = reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
    if (ours)
        xcb_ungrab_keyboard(display.get(), XCB_CURRENT_TIME);
    display.roundTrip();
    return !ours;
}

bool pointerGrabbed(Display& display) {
    const auto reply = owned(xcb_grab_pointer_reply(
        display.get(),
        xcb_grab_pointer(display.get(), 0, display.root(), 0, XCB_GRAB_MODE_ASYNC,
                         XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, XCB_CURRENT_TIME),
        nullptr));
    const bool ours = reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
    if (ours)
        xcb_ungrab_pointer(display.get(), XCB_CURRENT_TIME);
    display.roundTrip();
    return !ours;
}

bool awaitKeyboardGrab(Display& display, bool held) {
    return waitUntil(display, held ? "a grab of the keyboard" : "a free keyboard",
                     [&] { return keyboardGrabbed(display) == held; });
}

bool keyReserved(Display& display, xcb_keycode_t code, std::uint32_t modifiers) {
    return reserved(display, XCB_INPUT_GRAB_TYPE_KEYCODE, code, modifiers);
}

bool buttonReserved(Display& display, std::uint8_t button, std::uint32_t modifiers) {
    return reserved(display, XCB_INPUT_GRAB_TYPE_BUTTON, button, modifiers);
}

void reserveKey(Display& owner, xcb_keycode_t code, std::uint32_t modifiers, Protocol protocol) {
    if (protocol == Protocol::xinput2)
        xcb_discard_reply(owner.get(),
                          ask(owner, XCB_INPUT_GRAB_TYPE_KEYCODE, code, modifiers).sequence);
    else
        xcb_grab_key(owner.get(), 0, owner.root(), static_cast<std::uint16_t>(modifiers), code,
                     XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    owner.roundTrip();
}

std::string stuckInput(Display& display) {
    auto* x = display.get();
    const auto keys = owned(xcb_query_keymap_reply(x, xcb_query_keymap(x), nullptr));
    const auto pointer =
        owned(xcb_query_pointer_reply(x, xcb_query_pointer(x, display.root()), nullptr));
    std::string stuck;
    for (unsigned code = 0; code < 256; ++code)
        if ((keys->keys[code / 8] >> code % 8 & 1) != 0)
            stuck += "key " + std::to_string(code) + "; ";
    constexpr std::uint32_t anyButton = 0x1F00;
    if ((pointer->mask & anyButton) != 0)
        stuck += "buttons " + std::to_string(pointer->mask & anyButton) + "; ";
    if (keyboardGrabbed(display))
        stuck += "keyboard grabbed; ";
    if (pointerGrabbed(display))
        stuck += "pointer grabbed; ";
    return stuck;
}

} // namespace klova::rig
