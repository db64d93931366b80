#include "platform/x11/ToolkitConnection.h"

#include "platform/x11/UniqueC.h"
#include "platform/x11/XcbXkb.h"

#include <X11/Xlib.h>
#include <cstdint>

namespace klova::x11 {
namespace {

void (*theEnd)() = nullptr;

int handleLoss(Display* /*display*/) {
    theEnd();
    return 0;
}

void ignoreCrossings(xcb_connection_t* connection, xcb_window_t root) {
    constexpr std::uint32_t crossings = XCB_EVENT_MASK_ENTER_WINDOW | XCB_EVENT_MASK_LEAVE_WINDOW;
    const auto now = own(xcb_get_window_attributes_reply(
        connection, xcb_get_window_attributes(connection, root), nullptr));
    if (!now)
        return;
    const std::uint32_t mask = now->your_event_mask & ~crossings;
    xcb_change_window_attributes(connection, root, XCB_CW_EVENT_MASK, &mask);
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

void ignoreForeignClicks(xcb_connection_t* connection) {
    auto screen = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screen.rem > 0; xcb_screen_next(&screen))
        ignoreCrossings(connection, screen.data->root);
    const auto* xkb = xcb_get_extension_data(connection, &xcb_xkb_id);
    if (xkb != nullptr && xkb->present != 0)
        ignoreButtonsOfKeyboard(connection);
    xcb_flush(connection);
}

} // namespace klova::x11
