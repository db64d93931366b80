#include "desktop/Windows.h"

#include "desktop/Wait.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

namespace klova::rig {
namespace {

std::optional<Extents> extents(Display& display, xcb_window_t window, const std::string& property) {
    const auto values = display.values(window, property);
    if (values.size() != 4)
        return std::nullopt;
    return Extents{static_cast<int>(values[0]), static_cast<int>(values[1]),
                   static_cast<int>(values[2]), static_cast<int>(values[3])};
}

/// The window that the manager put round the client; the client where it put none.
xcb_window_t outermost(Display& display, xcb_window_t window) {
    for (;;) {
        const auto tree = owned(
            xcb_query_tree_reply(display.get(), xcb_query_tree(display.get(), window), nullptr));
        if (!tree || tree->parent == XCB_NONE || tree->parent == display.root())
            return window;
        window = tree->parent;
    }
}

Rect outerArea(Display& display, xcb_window_t window) {
    const auto geometry = owned(xcb_get_geometry_reply(
        display.get(), xcb_get_geometry(display.get(), outermost(display, window)), nullptr));
    if (!geometry)
        return {};
    const int border = 2 * geometry->border_width;
    return {geometry->x, geometry->y, geometry->width + border, geometry->height + border};
}

bool publishesExtents(Display& display, xcb_window_t window) {
    return extents(display, window, "_NET_FRAME_EXTENTS") ||
           extents(display, window, "_GTK_FRAME_EXTENTS");
}

/// How much larger the visible frame is than the client's area, on each side.
Extents decoration(Display& display, xcb_window_t window) {
    if (!publishesExtents(display, window)) {
        const auto outer = outerArea(display, window);
        const auto inner = clientArea(display, window);
        return {inner.x - outer.x, outer.right() - inner.right(), inner.y - outer.y,
                outer.bottom() - inner.bottom()};
    }
    auto frame = extents(display, window, "_NET_FRAME_EXTENTS").value_or(Extents{});
    if (managerWindow(display) == XCB_WINDOW_NONE)
        frame = {};
    const auto shadow = extents(display, window, "_GTK_FRAME_EXTENTS").value_or(Extents{});
    return {frame.left - shadow.left, frame.right - shadow.right, frame.top - shadow.top,
            frame.bottom - shadow.bottom};
}

/// From the corner of the visible frame to the one that the manager places: a shadow's, and on a
/// manager that publishes no extents the client's.
Extents placingOffset(Display& display, xcb_window_t window, const Extents& grown) {
    const auto shadow = extents(display, window, "_GTK_FRAME_EXTENTS");
    if (shadow)
        return {-shadow->left, 0, -shadow->top, 0};
    return publishesExtents(display, window) ? Extents{} : grown;
}

/// Says that it decorates itself, in the Motif hints that every manager knows.
bool wantsNoFrame(Display& display, xcb_window_t window) {
    constexpr std::uint32_t speaksOfDecorations = 2;
    const auto hints = display.values(window, "_MOTIF_WM_HINTS");
    return hints.size() >= 3 && (hints[0] & speaksOfDecorations) != 0 && hints[2] == 0;
}

constexpr std::uint32_t kRemove = 0, kAdd = 1, kFromPager = 2;

void requestMaximized(Display& display, xcb_window_t window, std::uint32_t action) {
    display.tellManager(window, "_NET_WM_STATE",
                        {action, display.atom("_NET_WM_STATE_MAXIMIZED_HORZ"),
                         display.atom("_NET_WM_STATE_MAXIMIZED_VERT"), kFromPager});
}

bool supports(Display& display, const std::string& what) {
    const auto supported = display.values(display.root(), "_NET_SUPPORTED");
    return std::find(supported.begin(), supported.end(), display.atom(what)) != supported.end();
}

void requestFrame(Display& display, xcb_window_t window, const Rect& visible) {
    const auto grown = decoration(display, window);
    const auto offset = placingOffset(display, window, grown);
    const auto number = [](int value) { return static_cast<std::uint32_t>(value); };
    const std::uint32_t x = number(visible.x + offset.left), y = number(visible.y + offset.top);
    const std::uint32_t width = number(visible.width - grown.left - grown.right);
    const std::uint32_t height = number(visible.height - grown.top - grown.bottom);
    constexpr std::uint32_t northWest = 1;
    constexpr std::uint32_t allFour = 0xFU << 8;
    if (supports(display, "_NET_MOVERESIZE_WINDOW")) {
        display.tellManager(window, "_NET_MOVERESIZE_WINDOW",
                            {northWest | allFour | kFromPager << 12, x, y, width, height});
        return;
    }
    const std::uint32_t values[] = {x, y, width, height};
    xcb_configure_window(display.get(), window,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                             XCB_CONFIG_WINDOW_HEIGHT,
                         values);
    display.roundTrip();
}

bool near(const Rect& a, const Rect& b, int slack) {
    return std::abs(a.x - b.x) <= slack && std::abs(a.y - b.y) <= slack &&
           std::abs(a.width - b.width) <= slack && std::abs(a.height - b.height) <= slack;
}

} // namespace

xcb_window_t managerWindow(Display& display) {
    const std::string property = "_NET_SUPPORTING_WM_CHECK";
    const auto window = display.values(display.root(), property);
    // It names itself too; without that it may be a leftover of a manager that is gone.
    const bool runs = !window.empty() && display.values(window[0], property) == window;
    return runs ? window[0] : xcb_window_t{XCB_WINDOW_NONE};
}

std::vector<xcb_window_t> managedWindows(Display& display) {
    return display.values(display.root(), "_NET_CLIENT_LIST");
}

std::optional<xcb_window_t> windowOfProcess(Display& display, pid_t process) {
    const std::vector<std::uint32_t> wanted{static_cast<std::uint32_t>(process)};
    auto windows = managedWindows(display);
    const auto found = std::find_if(windows.rbegin(), windows.rend(), [&](xcb_window_t window) {
        return display.values(window, "_NET_WM_PID") == wanted;
    });
    return found == windows.rend() ? std::nullopt : std::optional(*found);
}

std::optional<xcb_window_t> windowOfClass(Display& display, const std::string& name) {
    auto windows = managedWindows(display);
    const auto found = std::find_if(windows.rbegin(), windows.rend(), [&](xcb_window_t window) {
        const auto both = '\0' + display.text(window, "WM_CLASS");
        return both.find('\0' + name + '\0') != std::string::npos;
    });
    return found == windows.rend() ? std::nullopt : std::optional(*found);
}

xcb_window_t awaitWindow(Display& display, Process& process) {
    std::optional<xcb_window_t> window;
    require(
        display, "window of process " + std::to_string(process.id()),
        [&] {
            if (!process.running())
                throw std::runtime_error("a program ended at its start: " + process.output());
            window = windowOfProcess(display, process.id());
            return window && isSettled(display, *window);
        },
        [&] { return process.output(); });
    return window.value();
}

std::optional<xcb_window_t> unmanagedWindow(Display& display, const std::string& name) {
    const auto tree = owned(xcb_query_tree_reply(
        display.get(), xcb_query_tree(display.get(), display.root()), nullptr));
    for (int i = 0; i < tree->children_len; ++i) {
        const xcb_window_t window = xcb_query_tree_children(tree.get())[i];
        const auto shown = owned(xcb_get_window_attributes_reply(
            display.get(), xcb_get_window_attributes(display.get(), window), nullptr));
        if (shown && shown->map_state == XCB_MAP_STATE_VIEWABLE &&
            display.text(window, "WM_CLASS").starts_with(name))
            return window;
    }
    return std::nullopt;
}

xcb_window_t awaitUnmanaged(Display& display, const std::string& name) {
    std::optional<xcb_window_t> window;
    require(display, "unmanaged window of " + name,
            [&] { return (window = unmanagedWindow(display, name)).has_value(); });
    return window.value();
}

Rect clientArea(Display& display, xcb_window_t window) {
    const auto geometryCookie = xcb_get_geometry(display.get(), window);
    const auto placeCookie = xcb_translate_coordinates(display.get(), window, display.root(), 0, 0);
    const auto geometry = owned(xcb_get_geometry_reply(display.get(), geometryCookie, nullptr));
    const auto place = owned(xcb_translate_coordinates_reply(display.get(), placeCookie, nullptr));
    if (!geometry || !place)
        return {};
    return {place->dst_x, place->dst_y, geometry->width, geometry->height};
}

Rect visibleFrame(Display& display, xcb_window_t window) {
    const auto area = clientArea(display, window);
    const auto grown = decoration(display, window);
    return {area.x - grown.left, area.y - grown.top, area.width + grown.left + grown.right,
            area.height + grown.top + grown.bottom};
}

bool hasState(Display& display, xcb_window_t window, const std::string& state) {
    const auto states = display.values(window, "_NET_WM_STATE");
    return std::find(states.begin(), states.end(), display.atom(state)) != states.end();
}

bool isMaximized(Display& display, xcb_window_t window) {
    return hasState(display, window, "_NET_WM_STATE_MAXIMIZED_HORZ") &&
           hasState(display, window, "_NET_WM_STATE_MAXIMIZED_VERT");
}

bool isMinimized(Display& display, xcb_window_t window) {
    constexpr std::uint32_t iconic = 3;
    const auto state = display.values(window, "WM_STATE");
    return (!state.empty() && state[0] == iconic) ||
           hasState(display, window, "_NET_WM_STATE_HIDDEN");
}

bool isManaged(Display& display, xcb_window_t window) {
    return !display.values(window, "WM_STATE").empty();
}

bool isSettled(Display& display, xcb_window_t window) {
    const bool tells = supports(display, "_NET_FRAME_EXTENTS");
    return isManaged(display, window) &&
           (!tells || wantsNoFrame(display, window) || publishesExtents(display, window));
}

xcb_window_t activeWindow(Display& display) {
    const auto window = display.values(display.root(), "_NET_ACTIVE_WINDOW");
    return window.empty() ? XCB_NONE : window[0];
}

bool activate(Display& display, xcb_window_t window) {
    using Clock = std::chrono::steady_clock;
    Clock::time_point next{};
    return waitUntil(display, "activation", [&] {
        // A manager that is replaced may leave its word on a window that it has minimized.
        if (activeWindow(display) == window && !isMinimized(display, window))
            return true;
        // Marco forgets a request that comes while it gives the focus to a new window.
        if (Clock::now() >= next) {
            display.tellManager(window, "_NET_ACTIVE_WINDOW", {kFromPager, XCB_CURRENT_TIME, 0});
            next = Clock::now() + std::chrono::milliseconds(250);
        }
        return false;
    });
}

bool maximize(Display& display, xcb_window_t window) {
    requestMaximized(display, window, kAdd);
    return waitUntil(display, "maximized window", [&] { return isMaximized(display, window); });
}

bool unmaximize(Display& display, xcb_window_t window) {
    requestMaximized(display, window, kRemove);
    return waitUntil(display, "window no more maximized",
                     [&] { return !isMaximized(display, window); });
}

bool minimize(Display& display, xcb_window_t window) {
    display.tellManager(window, "WM_CHANGE_STATE", {3});
    return awaitMinimized(display, window);
}

bool awaitMinimized(Display& display, xcb_window_t window, bool minimized) {
    return waitUntil(display, minimized ? "minimized window" : "reopened window",
                     [&] { return isMinimized(display, window) == minimized; });
}

bool awaitActive(Display& display, xcb_window_t window) {
    return waitUntil(display, "active window", [&] { return activeWindow(display) == window; });
}

bool awaitFrame(Display& display, xcb_window_t window, const Rect& visible, int slack) {
    return waitUntil(
        display, "window at " + toText(visible),
        [&] { return near(visibleFrame(display, window), visible, slack); },
        [&] { return toText(visibleFrame(display, window)); });
}

bool place(Display& display, xcb_window_t window, const Rect& visible, int slack) {
    unmaximize(display, window);
    requestFrame(display, window, visible);
    return awaitFrame(display, window, visible, slack);
}

SizeLimits sizeLimits(Display& display, xcb_window_t window) {
    constexpr std::uint32_t hasMinimum = 1U << 4, hasMaximum = 1U << 5, hasSteps = 1U << 6;
    const auto hints = display.values(window, "WM_NORMAL_HINTS");
    SizeLimits limits;
    if (hints.size() < 18)
        return limits;
    const auto number = [&](std::size_t index) { return static_cast<int>(hints[index]); };
    if ((hints[0] & hasSteps) != 0) {
        limits.stepX = std::max(1, number(9));
        limits.stepY = std::max(1, number(10));
    }
    const auto grown = decoration(display, window);
    if ((hints[0] & hasMinimum) != 0) {
        limits.minWidth = number(5) + grown.left + grown.right;
        limits.minHeight = number(6) + grown.top + grown.bottom;
    }
    if ((hints[0] & hasMaximum) != 0) {
        limits.maxWidth = number(7) + grown.left + grown.right;
        limits.maxHeight = number(8) + grown.top + grown.bottom;
    }
    return limits;
}

} // namespace klova::rig
