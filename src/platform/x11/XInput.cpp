#include "platform/x11/XInput.h"

namespace klova::x11 {

void selectXInputEvents(Connection& connection, xcb_input_device_id_t device, std::uint32_t mask) {
    const struct {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } selection{{device, 1}, mask};
    xcb_input_xi_select_events(connection.get(), connection.root(), 1, &selection.head);
}

Point queryPointer(Connection& connection) {
    const auto reply = own(xcb_input_xi_query_pointer_reply(
        connection.get(),
        xcb_input_xi_query_pointer(connection.get(), connection.root(), kMasterPointer), nullptr));
    return reply ? pixel(reply->root_x, reply->root_y) : Point{};
}

} // namespace klova::x11
