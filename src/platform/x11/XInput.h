// The few XInput2 requests of which the event tap is made.
#pragma once

#include "geometry/Frame.h"
#include "platform/x11/Connection.h"

#include <cmath>
#include <cstdint>
#include <optional>
#include <span>
#include <xcb/xinput.h>

namespace klova::x11 {

using KeyEvent = xcb_input_key_press_event_t;
using ButtonEvent = xcb_input_button_press_event_t;
using RawKeyEvent = xcb_input_raw_key_press_event_t;
using RawButtonEvent = xcb_input_raw_button_press_event_t;

/// The server's first master pair; their ids are fixed.
inline constexpr xcb_input_device_id_t kMasterPointer = 2;
inline constexpr xcb_input_device_id_t kMasterKeyboard = 3;
inline constexpr xcb_input_device_id_t kAllDevices = 0;

/// What a frozen device does next.
enum class Allow : std::uint8_t {
    thaw = XCB_INPUT_EVENT_MODE_ASYNC_DEVICE,
    untilNextEvent = XCB_INPUT_EVENT_MODE_SYNC_DEVICE,
    replay = XCB_INPUT_EVENT_MODE_REPLAY_DEVICE,
};

/// With CurrentTime always: the server ignores the time of an event when another one followed
/// within its millisecond, and the device would stay frozen.
inline void allowEvents(Connection& connection, xcb_input_device_id_t device, Allow mode) {
    xcb_input_xi_allow_events(connection.get(), XCB_CURRENT_TIME, device,
                              static_cast<std::uint8_t>(mode), 0, connection.root());
}

/// Whether an event is one that a grab of ours delivers: a key of the master keyboard.
bool isGrabbedKey(const Connection& connection, const xcb_generic_event_t& event);

/// Whether an event is a key of the master keyboard, watched or grabbed.
bool isKey(const Connection& connection, const xcb_generic_event_t& event);

/// When a grab of the master keyboard began, by whomever, if that is what the event says.
std::optional<xcb_timestamp_t> timeOfKeyboardGrab(const Connection& connection,
                                                  const xcb_generic_event_t& event);

/// Whether an event says that a grab of the master keyboard has ended.
bool endsKeyboardGrab(const Connection& connection, const xcb_generic_event_t& event);

/// Selects `mask` (XInput2 event mask) of `device` on the root window.
void selectXInputEvents(Connection& connection, xcb_input_device_id_t device, std::uint32_t mask);

/// The question for the pointer, whose answer is to be taken.
xcb_input_xi_query_pointer_cookie_t askPointer(Connection& connection);

/// Its place in whole root pixels, y downward.
Point takePointer(Connection& connection, xcb_input_xi_query_pointer_cookie_t cookie);

inline Point queryPointer(Connection& connection) {
    return takePointer(connection, askPointer(connection));
}

/// A place of an event, floored to the pixel that the pointer is in: fractions would be lost to
/// the window, which stands on whole pixels, but not to the pointer.
inline Point pixel(xcb_input_fp1616_t x, xcb_input_fp1616_t y) {
    return {std::floor(x / 65536.0), std::floor(y / 65536.0)};
}

} // namespace klova::x11
