// Events that Klova makes up itself.
#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <xcb/xcb.h>

namespace klova::x11 {

/// Sends `event` to whoever selects `mask` of `window`; to whoever made it where that is none.
template <typename Event> void sendEvent(xcb_connection_t* connection, xcb_window_t window,
                                         const Event& event,
                                         std::uint32_t mask = XCB_EVENT_MASK_NO_EVENT) {
    std::array<char, 32> bytes{}; // the library reads as many, however short the event
    static_assert(sizeof event <= bytes.size());
    std::memcpy(bytes.data(), &event, sizeof event);
    xcb_send_event(connection, 0, window, mask, bytes.data());
}

} // namespace klova::x11
