#include "platform/x11/Properties.h"

#include "platform/x11/UniqueC.h"

#include <cstddef>

namespace klova::x11 {

xcb_get_property_cookie_t askProperty(xcb_connection_t* connection, xcb_window_t window,
                                      xcb_atom_t property) {
    constexpr std::uint32_t maximum = 1 << 16;
    return xcb_get_property(connection, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, maximum);
}

std::vector<std::uint32_t> takeItems(xcb_connection_t* connection,
                                     xcb_get_property_cookie_t cookie) {
    const auto reply = own(xcb_get_property_reply(connection, cookie, nullptr));
    if (!reply || reply->format != 32)
        return {};
    const auto* items = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {items, items + reply->value_len};
}

std::string takeText(xcb_connection_t* connection, xcb_get_property_cookie_t cookie) {
    const auto reply = own(xcb_get_property_reply(connection, cookie, nullptr));
    if (!reply || reply->format != 8)
        return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            std::size_t{reply->value_len}};
}

} // namespace klova::x11
