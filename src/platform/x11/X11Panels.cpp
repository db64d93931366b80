#include "platform/x11/X11Panels.h"

#include "platform/x11/Activation.h"
#include "platform/x11/Connection.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>
#include <xcb/shape.h>

namespace klova::x11 {
namespace {

/// The rows of the frame: narrower ones where its corners are round, one block between them.
std::vector<xcb_rectangle_t> rowsOf(const PanelFrame& frame) {
    const int width = frame.width - frame.left - frame.right;
    const int height = frame.height - frame.top - frame.bottom;
    std::vector<xcb_rectangle_t> rows;
    const auto add = [&](int y, int inset, int rowHeight) {
        rows.push_back({static_cast<std::int16_t>(frame.left + inset),
                        static_cast<std::int16_t>(frame.top + y),
                        static_cast<std::uint16_t>(width - 2 * inset),
                        static_cast<std::uint16_t>(rowHeight)});
    };
    const double radius = frame.cornerRadius;
    const int corner = static_cast<int>(std::ceil(radius));
    for (int row = 0; row < corner; ++row) {
        const double rise = radius - row - 0.5;
        const int inset = static_cast<int>(
            std::lround(radius - std::sqrt(std::max(0.0, radius * radius - rise * rise))));
        add(row, inset, 1);
        add(height - 1 - row, inset, 1);
    }
    add(corner, 0, height - 2 * corner);
    return rows;
}

xcb_window_t createClock(Connection& connection) {
    const xcb_window_t window = xcb_generate_id(connection.get());
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection.get(), XCB_COPY_FROM_PARENT, window, connection.root(), 0, 0, 1, 1,
                      0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &mask);
    return window;
}

} // namespace

X11Panels::X11Panels(Connection& connection, WindowManager& manager, const XSettings& settings)
    : connection_(connection), manager_(manager), settings_(settings),
      compositor_(connection, "_NET_WM_CM_S"), clock_(createClock(connection)) {}

void X11Panels::setFrame(Window window, const PanelFrame& frame) {
    const auto id = static_cast<xcb_window_t>(window);
    xcb_connection_t* x = connection_.get();
    const std::array extents{frame.left, frame.right, frame.top, frame.bottom};
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, id, connection_.atoms()._GTK_FRAME_EXTENTS,
                        XCB_ATOM_CARDINAL, 32, extents.size(), extents.data());
    const auto rows = rowsOf(frame);
    const auto count = static_cast<std::uint32_t>(rows.size());
    xcb_shape_rectangles(x, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED, id, 0,
                         0, count, rows.data());
    if (composited())
        xcb_shape_mask(x, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, id, 0, 0, XCB_PIXMAP_NONE);
    else
        xcb_shape_rectangles(x, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, XCB_CLIP_ORDERING_UNSORTED,
                             id, 0, 0, count, rows.data());
    connection_.flush();
}

void X11Panels::activate(Window window) {
    const auto id = static_cast<xcb_window_t>(window);
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(connection_.get(), id, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    x11::activate(connection_, manager_, id, serverTime());
}

/// Managers distrust requests with a time before that of the last input. What opened a panel may
/// not have been an event of ours: a click in another program's menu, a second start.
xcb_timestamp_t X11Panels::serverTime() {
    xcb_change_property(connection_.get(), XCB_PROP_MODE_APPEND, clock_,
                        connection_.atoms().WM_STATE, XCB_ATOM_CARDINAL, 32, 0, nullptr);
    connection_.roundTrip();
    const auto ofClock = [this](const xcb_generic_event_t& event) {
        return (event.response_type & 0x7F) == XCB_PROPERTY_NOTIFY &&
               reinterpret_cast<const xcb_property_notify_event_t&>(event).window == clock_;
    };
    const auto event = connection_.takeWaiting(ofClock);
    return event ? reinterpret_cast<const xcb_property_notify_event_t&>(*event).time
                 : XCB_CURRENT_TIME;
}

void X11Panels::setCompositedChanged(std::function<void()> changed) {
    changed_ = std::move(changed);
}

void X11Panels::handle(const xcb_generic_event_t& event) {
    if (compositor_.handle(event) && changed_)
        changed_();
}

} // namespace klova::x11
