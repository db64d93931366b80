#include "platform/x11/ToolkitConnection.h"

#include "platform/x11/SendEvent.h"
#include "platform/x11/UniqueC.h"
#include "platform/x11/XcbXkb.h"

#include <X11/Xlib.h>
#include <cstdint>
#include <utility>

namespace klova::x11 {
namespace {

void (*theEnd)() = nullptr;

int handleLoss(Display* /*display*/) {
    theEnd();
    return 0;
}

/// Makes `bits` a part of the connection's event mask of each root window, or no part of it.
void selectOnRoots(xcb_connection_t* connection, std::uint32_t bits, bool wanted) {
    auto screen = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screen.rem > 0; xcb_screen_next(&screen)) {
        const auto root = screen.data->root;
        const auto now = own(xcb_get_window_attributes_reply(
            connection, xcb_get_window_attributes(connection, root), nullptr));
        if (!now)
            continue;
        const std::uint32_t others = now->your_event_mask & ~bits;
        const std::uint32_t mask = wanted ? others | bits : others;
        xcb_change_window_attributes(connection, root, XCB_CW_EVENT_MASK, &mask);
    }
}

void ignoreButtonsOfKeyboard(xcb_connection_t* connection) {
    xcb_xkb_select_events_details_t details{};
    details.affectState = XCB_XKB_STATE_PART_POINTER_BUTTONS;
    xcb_xkb_select_events_aux(connection, XCB_XKB_ID_USE_CORE_KBD, XCB_XKB_EVENT_TYPE_STATE_NOTIFY,
                              0, 0, 0, 0, &details);
}

} // namespace

void setXlibConnectionLost(void (*end)()) {
    theEnd = end;
    XSetIOErrorHandler(handleLoss);
}

ToolkitConnection::ToolkitConnection(xcb_connection_t* connection, const Atoms& atoms)
    : connection_(connection), read_{atoms._NET_SUPPORTED, atoms._NET_WORKAREA} {
    selectOnRoots(connection,
                  XCB_EVENT_MASK_ENTER_WINDOW | XCB_EVENT_MASK_LEAVE_WINDOW |
                      XCB_EVENT_MASK_PROPERTY_CHANGE,
                  false);
    const auto* xkb = xcb_get_extension_data(connection, &xcb_xkb_id);
    if (xkb != nullptr && xkb->present != 0)
        ignoreButtonsOfKeyboard(connection);
    xcb_flush(connection);
}

void ToolkitConnection::focusChanged(xcb_window_t window) {
    const bool hears = window != XCB_NONE;
    if (std::exchange(hears_, hears) == hears)
        return;
    selectOnRoots(connection_, XCB_EVENT_MASK_PROPERTY_CHANGE, hears);
    if (hears)
        for (const xcb_atom_t property : read_)
            announce(property, window);
    xcb_flush(connection_);
}

/// As the server would, but to whoever made `window` and to nobody else.
void ToolkitConnection::announce(xcb_atom_t property, xcb_window_t window) {
    xcb_property_notify_event_t event{};
    event.response_type = XCB_PROPERTY_NOTIFY;
    event.atom = property;
    auto screen = xcb_setup_roots_iterator(xcb_get_setup(connection_));
    for (; screen.rem > 0; xcb_screen_next(&screen)) {
        event.window = screen.data->root;
        sendEvent(connection_, window, event);
    }
}

} // namespace klova::x11
