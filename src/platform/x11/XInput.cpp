#include "platform/x11/XInput.h"

namespace klova::x11 {

namespace {

/// The XInput2 type of an event, 0 for all others.
std::uint16_t xinputType(const Connection& connection, const xcb_generic_event_t& event) {
    const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
    const bool isXInput = (event.response_type & 0x7F) == XCB_GE_GENERIC &&
                          generic.extension == connection.xinputOpcode();
    return isXInput ? generic.event_type : 0;
}

} // namespace

bool isGrabbedKey(const Connection& connection, const xcb_generic_event_t& event) {
    const auto type = xinputType(connection, event);
    return type == XCB_INPUT_KEY_PRESS || type == XCB_INPUT_KEY_RELEASE;
}

bool isKey(const Connection& connection, const xcb_generic_event_t& event) {
    const auto type = xinputType(connection, event);
    return isGrabbedKey(connection, event) || type == XCB_INPUT_RAW_KEY_PRESS ||
           type == XCB_INPUT_RAW_KEY_RELEASE;
}

std::optional<xcb_timestamp_t> timeOfKeyboardGrab(const Connection& connection,
                                                  const xcb_generic_event_t& event) {
    const auto& focus = reinterpret_cast<const xcb_input_focus_in_event_t&>(event);
    const bool began = xinputType(connection, event) == XCB_INPUT_FOCUS_IN &&
                       focus.mode == XCB_INPUT_NOTIFY_MODE_GRAB;
    return began ? std::optional(focus.time) : std::nullopt;
}

bool endsKeyboardGrab(const Connection& connection, const xcb_generic_event_t& event) {
    return xinputType(connection, event) == XCB_INPUT_FOCUS_OUT &&
           reinterpret_cast<const xcb_input_focus_out_event_t&>(event).mode ==
               XCB_INPUT_NOTIFY_MODE_UNGRAB;
}

void selectXInputEvents(Connection& connection, xcb_input_device_id_t device, std::uint32_t mask) {
    const struct {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } selection{{device, 1}, mask};
    xcb_input_xi_select_events(connection.get(), connection.root(), 1, &selection.head);
}

xcb_input_xi_query_pointer_cookie_t askPointer(Connection& connection) {
    return xcb_input_xi_query_pointer(connection.get(), connection.root(), kMasterPointer);
}

Point takePointer(Connection& connection, xcb_input_xi_query_pointer_cookie_t cookie) {
    const auto reply = own(xcb_input_xi_query_pointer_reply(connection.get(), cookie, nullptr));
    return reply ? pixel(reply->root_x, reply->root_y) : Point{};
}

} // namespace klova::x11
