// What the programs that send a request need to make it up.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <xcb/xcb.h>

inline std::uint32_t number(const char* text) {
    return static_cast<std::uint32_t>(std::strtol(text, nullptr, 10));
}

inline xcb_atom_t atom(xcb_connection_t* connection, const char* name) {
    auto* reply = xcb_intern_atom_reply(
        connection,
        xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(std::strlen(name)), name),
        nullptr);
    const auto result = reply->atom;
    std::free(reply);
    return result;
}
