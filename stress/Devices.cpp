#include "Devices.h"

#include <algorithm>

namespace klova::stress {

std::vector<int> keysDown(rig::Display& display) {
    const auto reply =
        rig::owned(xcb_query_keymap_reply(display.get(), xcb_query_keymap(display.get()), nullptr));
    std::vector<int> down;
    for (int code = 0; reply && code < 256; ++code)
        if ((reply->keys[code / 8] >> (code % 8) & 1) != 0)
            down.push_back(code);
    return down;
}

bool keyIsDown(rig::Display& display, int keycode) {
    const auto down = keysDown(display);
    return std::ranges::find(down, keycode) != down.end();
}

xcb_window_t focus(rig::Display& display) {
    const auto reply = rig::owned(
        xcb_get_input_focus_reply(display.get(), xcb_get_input_focus(display.get()), nullptr));
    return reply ? reply->focus : XCB_NONE;
}

std::uint32_t pointerState(rig::Display& display) {
    const auto reply = rig::owned(xcb_query_pointer_reply(
        display.get(), xcb_query_pointer(display.get(), display.root()), nullptr));
    return reply ? reply->mask : 0;
}

} // namespace klova::stress
