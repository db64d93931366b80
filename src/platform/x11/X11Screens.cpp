#include "platform/x11/X11Screens.h"

#include "platform/x11/Properties.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>
#include <string_view>
#include <utility>
#include <xcb/randr.h>

namespace klova::x11 {
namespace {

/// The scale that toolkits take from the `Xft.dpi` resource; 1 where it says nothing usable.
double scaleOf(std::string_view resources) {
    constexpr std::string_view name = "Xft.dpi:";
    auto start = resources.find(name);
    while (start != std::string_view::npos && start != 0 && resources[start - 1] != '\n')
        start = resources.find(name, start + 1);
    if (start == std::string_view::npos)
        return 1;
    resources.remove_prefix(start + name.size());
    resources.remove_prefix(std::min(resources.find_first_not_of(" \t"), resources.size()));
    double dpi = 0;
    const auto [end, error] = std::from_chars(resources.begin(), resources.end(), dpi);
    return error == std::errc{} && dpi > 0 ? dpi / 96 : 1;
}

/// Null on a server without RandR: asking it nevertheless would close the connection.
UniqueC<xcb_randr_get_monitors_reply_t> askedMonitors(Connection& connection) {
    if (connection.randrFirstEvent() == 0)
        return nullptr;
    const auto cookie = xcb_randr_get_monitors(connection.get(), connection.root(), 1);
    return own(xcb_randr_get_monitors_reply(connection.get(), cookie, nullptr));
}

} // namespace

X11Screens::X11Screens(Connection& connection) : connection_(connection) {
    // A change of the whole, and of monitors that were only defined, shows on the root window.
    connection.selectRootEvents(XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    if (connection.randrFirstEvent() != 0)
        xcb_randr_select_input(
            connection.get(), connection.root(),
            XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE | XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE |
                XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE | XCB_RANDR_NOTIFY_MASK_RESOURCE_CHANGE);
}

void X11Screens::handle(const xcb_generic_event_t& event) {
    const auto type = event.response_type & 0x7F;
    const auto randr = connection_.randrFirstEvent();
    const auto& configure = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
    const auto& property = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if ((randr != 0 &&
         (type == randr + XCB_RANDR_SCREEN_CHANGE_NOTIFY || type == randr + XCB_RANDR_NOTIFY)) ||
        (type == XCB_CONFIGURE_NOTIFY && configure.window == connection_.root()) ||
        (type == XCB_PROPERTY_NOTIFY && property.window == connection_.root() &&
         property.atom == XCB_ATOM_RESOURCE_MANAGER))
        inventory_.reset();
}

void X11Screens::watch(bool closely) {
    if (closely && !watched_)
        inventory_ = read();
    watched_ = closely;
}

const X11Screens::Inventory& X11Screens::inventory() {
    if (!inventory_)
        inventory_ = read();
    return *inventory_;
}

X11Screens::Inventory X11Screens::read() {
    auto* connection = connection_.get();
    const auto resources = askProperty(connection, connection_.root(), XCB_ATOM_RESOURCE_MANAGER);
    const auto rootCookie = xcb_get_geometry(connection, connection_.root());
    const auto monitors = askedMonitors(connection_);
    Inventory inventory;
    inventory.scale = scaleOf(takeText(connection, resources));
    const auto root = own(xcb_get_geometry_reply(connection, rootCookie, nullptr));

    auto& found = inventory.monitors;
    auto iterator = monitors ? xcb_randr_get_monitors_monitors_iterator(monitors.get())
                             : xcb_randr_monitor_info_iterator_t{};
    for (; iterator.rem > 0; xcb_randr_monitor_info_next(&iterator)) {
        const auto& monitor = *iterator.data;
        if (monitor.width == 0 || monitor.height == 0)
            continue;
        if (monitor.primary != 0)
            inventory.primary = found.size();
        found.push_back({{monitor.x, monitor.y, monitor.width, monitor.height}, {}});
    }
    if (found.empty()) {
        const auto& screen = connection_.screen();
        found.push_back({{0, 0, root ? root->width : screen.width_in_pixels,
                          root ? root->height : screen.height_in_pixels},
                         {}});
    }
    shiftIntoRow(found);
    return inventory;
}

void X11Screens::shiftIntoRow(std::vector<Monitor>& monitors) {
    std::vector<Monitor*> row;
    row.reserve(monitors.size());
    for (Monitor& monitor : monitors)
        row.push_back(&monitor);
    std::ranges::stable_sort(row, {}, [](const Monitor* monitor) { return monitor->area.x; });
    int edge = row.front()->area.x;
    for (Monitor* monitor : row) {
        monitor->shift = {double(edge - monitor->area.x), double(-monitor->area.y)};
        edge += monitor->area.width;
    }
}

Screen X11Screens::Inventory::screen(const Monitor& monitor) const {
    return {moved(frameOf(monitor.area), monitor.shift), scale};
}

std::optional<std::vector<Screen>> X11Screens::screens() {
    std::vector<Screen> screens;
    screens.reserve(monitors().size());
    for (const Monitor& monitor : monitors())
        screens.push_back(inventory_->screen(monitor));
    return screens;
}

std::optional<Screen> X11Screens::mainScreen() { return inventory().screen(mainMonitor()); }

const Monitor& X11Screens::monitorOf(const Frame& frame) {
    const int x = static_cast<int>(std::floor(midX(frame)));
    const int y = static_cast<int>(std::floor(midY(frame)));
    const auto distance = [](int at, int begin, int end) {
        return std::max({begin - at, 0, at - (end - 1)});
    };
    return *std::ranges::min_element(monitors(), {}, [&](const Monitor& monitor) {
        const Box& area = monitor.area;
        return std::pair(distance(x, area.x, area.right()), distance(y, area.y, area.bottom()));
    });
}

Point X11Screens::inRoot(Point inRow) {
    for (const Monitor& monitor : monitors()) {
        const Point place{inRow.x - monitor.shift.x, inRow.y - monitor.shift.y};
        if (contains(monitor.area, place))
            return place;
    }
    return inRow;
}

} // namespace klova::x11
