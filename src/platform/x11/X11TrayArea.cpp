#include "platform/x11/X11TrayArea.h"

#include "platform/x11/Connection.h"
#include "platform/x11/Properties.h"
#include "platform/x11/SendEvent.h"

#include <algorithm>
#include <ranges>

namespace klova::x11 {
namespace {

constexpr std::uint32_t kRequestDock = 0;
constexpr std::uint8_t kDepthWithAlpha = 32;

bool hasAlpha(const xcb_screen_t& screen, xcb_visualid_t visual) {
    for (auto depth = xcb_screen_allowed_depths_iterator(&screen); depth.rem != 0;
         xcb_depth_next(&depth)) {
        const auto* visuals = xcb_depth_visuals(depth.data);
        const auto count = static_cast<std::size_t>(xcb_depth_visuals_length(depth.data));
        if (depth.data->depth == kDepthWithAlpha &&
            std::ranges::find(visuals, visuals + count, visual, &xcb_visualtype_t::visual_id) !=
                visuals + count)
            return true;
    }
    return false;
}

} // namespace

X11TrayArea::X11TrayArea(Connection& connection)
    : connection_(connection), tray_(connection, "_NET_SYSTEM_TRAY_S") {}

bool X11TrayArea::blends() const {
    const auto visual =
        takeItems(connection_.get(), askProperty(connection_.get(), tray_.owner(),
                                                 connection_.atoms()._NET_SYSTEM_TRAY_VISUAL));
    return visual.size() == 1 && hasAlpha(connection_.screen(), visual.front());
}

void X11TrayArea::embed(Window icon, std::function<void()> embedded) {
    if (!present())
        return;
    icon_ = static_cast<xcb_window_t>(icon);
    embedded_ = std::move(embedded);
    const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection_.get(), icon_, XCB_CW_EVENT_MASK, &mask);
    requestDock();
    connection_.flush();
}

void X11TrayArea::requestDock() {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = tray_.owner();
    message.type = connection_.atoms()._NET_SYSTEM_TRAY_OPCODE;
    message.data.data32[0] = XCB_CURRENT_TIME;
    message.data.data32[1] = kRequestDock;
    message.data.data32[2] = icon_;
    sendEvent(connection_.get(), tray_.owner(), message);
}

void X11TrayArea::handle(const xcb_generic_event_t& event) {
    if (tray_.handle(event) && changed_)
        changed_();
    if ((event.response_type & 0x7F) != XCB_REPARENT_NOTIFY)
        return;
    const auto& moved = reinterpret_cast<const xcb_reparent_notify_event_t&>(event);
    if (moved.window == icon_ && moved.parent != connection_.root() && embedded_)
        embedded_();
}

} // namespace klova::x11
