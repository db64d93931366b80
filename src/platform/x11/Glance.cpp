#include "platform/x11/Glance.h"

#include "platform/x11/Properties.h"
#include "platform/x11/ServerGrab.h"

#include <algorithm>
#include <array>
#include <xcb/xcbext.h>

namespace klova::x11 {

Glance::Glance(Connection& connection, xcb_window_t guess)
    : connection_(connection), guess_(guess) {
    auto* x = connection.get();
    {
        const ServerGrab grab(connection);
        active_ = askProperty(x, connection.root(), connection.atoms()._NET_ACTIVE_WINDOW);
        clients_ = askProperty(x, connection.root(), connection.atoms()._NET_CLIENT_LIST);
        if (guess != XCB_NONE) {
            snapshot_.emplace(connection, guess);
            names_.emplace(connection, guess);
        }
    }
    last_ = xcb_get_input_focus(x);
}

Glance::~Glance() {
    auto* x = connection_.get();
    if (!lastTaken_)
        xcb_discard_reply(x, last_.sequence);
    if (taken_)
        return;
    xcb_discard_reply(x, active_.sequence);
    xcb_discard_reply(x, clients_.sequence);
    if (snapshot_)
        snapshot_->discard();
    if (names_)
        names_->discard();
}

bool Glance::answered() {
    void* reply = nullptr;
    xcb_generic_error_t* error = nullptr;
    lastTaken_ =
        lastTaken_ || xcb_poll_for_reply(connection_.get(), last_.sequence, &reply, &error) != 0;
    own(reply);
    own(error);
    return lastTaken_;
}

Sighting Glance::take(WindowManager& manager) {
    taken_ = true;
    Sighting sighting;
    sighting.active = activeOf(connection_, active_);
    sighting.listed =
        std::ranges::count(takeItems(connection_.get(), clients_), sighting.active) > 0;
    if (snapshot_)
        sighting.snapshot = snapshot_->take(manager);
    if (names_)
        sighting.names = names_->take();
    return sighting;
}

bool isSeen(const Atoms& atoms, xcb_atom_t property) {
    const std::array seen{atoms._NET_ACTIVE_WINDOW,
                          atoms._NET_CLIENT_LIST,
                          atoms._NET_SUPPORTED,
                          atoms._NET_SUPPORTING_WM_CHECK,
                          atoms._NET_FRAME_EXTENTS,
                          atoms._GTK_FRAME_EXTENTS,
                          atoms.WM_STATE,
                          atoms._NET_WM_STATE,
                          atoms._NET_WM_WINDOW_TYPE,
                          atoms._GTK_APPLICATION_ID,
                          atoms._KDE_NET_WM_DESKTOP_FILE,
                          xcb_atom_t{XCB_ATOM_WM_CLASS}};
    return std::ranges::count(seen, property) > 0;
}

xcb_window_t activeOf(Connection& connection, xcb_get_property_cookie_t cookie) {
    const auto items = takeItems(connection.get(), cookie);
    return items.empty() || items[0] == connection.root() ? XCB_NONE : items[0];
}

} // namespace klova::x11
