// Reading window properties: ask for many, then take the answers, so that all cost one round trip.
#pragma once

#include <cstdint>
#include <string>
#include <vector>
#include <xcb/xcb.h>

namespace klova::x11 {

xcb_get_property_cookie_t askProperty(xcb_connection_t* connection, xcb_window_t window,
                                      xcb_atom_t property);

/// The 32-bit items of the property; empty where it is missing, malformed or its window gone.
std::vector<std::uint32_t> takeItems(xcb_connection_t* connection,
                                     xcb_get_property_cookie_t cookie);

/// The bytes of the property; empty where it is missing or its window gone.
std::string takeText(xcb_connection_t* connection, xcb_get_property_cookie_t cookie);

} // namespace klova::x11
