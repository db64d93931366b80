#include "platform/x11/Atoms.h"

#include "platform/x11/UniqueC.h"

#include <array>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace klova::x11 {

Atoms::Atoms(xcb_connection_t* connection) {
    using Entry = std::pair<std::string_view, xcb_atom_t*>;
    const std::array entries = {
#define KLOVA_ATOM_ENTRY(name) Entry{#name, &(name)},
        KLOVA_ATOMS(KLOVA_ATOM_ENTRY)
#undef KLOVA_ATOM_ENTRY
    };
    std::vector<xcb_intern_atom_cookie_t> cookies;
    cookies.reserve(entries.size());
    for (const auto& [name, atom] : entries)
        cookies.push_back(
            xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data()));
    for (std::size_t i = 0; i < entries.size(); ++i)
        if (const auto reply = own(xcb_intern_atom_reply(connection, cookies[i], nullptr)))
            *entries[i].second = reply->atom;
}

} // namespace klova::x11
