// A virtual desktop and the services that see its windows, driven by hand.
#pragma once

#include "desktop/ManagerBarrier.h"
#include "desktop/Monitors.h"
#include "desktop/Placement.h"
#include "desktop/TestWindow.h"
#include "desktop/VirtualDesktop.h"
#include "desktop/Wait.h"
#include "platform/x11/X11AccessibilityService.h"
#include "platform/x11/X11Screens.h"
#include "platform/x11/X11Workspace.h"

#include <chrono>
#include <functional>
#include <string>

namespace klova::x11 {

class WindowBridge {
public:
    /// Without a name there is no window manager.
    explicit WindowBridge(const std::string& manager)
        : desktop({.windowManager = manager}), connection(desktop.server().display().c_str()),
          barrier_(desktop.server().display()) {}

    rig::VirtualDesktop desktop;
    Connection connection;
    X11Screens screens{connection};
    WindowManager windowManager{connection};
    X11AccessibilityService service{connection, windowManager, screens};
    X11Workspace workspace{connection, service};

    std::string name() { return desktop.server().display(); }
    rig::Display& display() { return desktop.display(); }

    void pump() {
        while (auto event = connection.poll()) {
            windowManager.handle(*event);
            screens.handle(*event);
            service.handle(*event);
        }
        windowManager.watch(true);
        service.onDeadline(std::chrono::steady_clock::now());
        service.flushWrites();
    }

    bool until(const std::string& what, const std::function<bool()>& predicate) {
        return rig::waitUntil(display(), what, [&] {
            pump();
            return predicate();
        });
    }

    /// Everything that was written is sent, answered and, if need be, corrected; and the manager
    /// has dealt with all that came before.
    bool settle() {
        const auto quiet = [&] { return !service.deadline(); };
        return until("end of all writes", quiet) && barrier_.pass() &&
               until("end of all answers", quiet);
    }

    AXUIElementRef focused() {
        const auto process = workspace.frontmostApplication()->processIdentifier;
        const auto read = service.AXUIElementCopyAttributeValue(
            service.AXUIElementCreateApplication(process), ax::focusedWindow);
        return read.value ? std::get<AXUIElementRef>(*read.value) : nullptr;
    }

    /// Activates the window by other means, and finds it.
    AXUIElementRef focus(xcb_window_t window) {
        rig::activate(display(), window);
        AXUIElementRef element;
        until("focused window", [&] { return (element = focused()) != nullptr; });
        return element;
    }

    template <typename T> std::optional<T> read(const AXUIElementRef& element, auto attribute) {
        const auto read = service.AXUIElementCopyAttributeValue(element, attribute);
        if (!read.value)
            return std::nullopt;
        return std::get<T>(*read.value);
    }

    std::optional<Frame> frame(const AXUIElementRef& element) {
        const auto position = read<AXValue>(element, ax::position);
        const auto size = read<AXValue>(element, ax::size);
        if (!position || !size)
            return std::nullopt;
        return Frame{std::get<Point>(*position), std::get<Size>(*size)};
    }

    template <typename T> void write(const AXUIElementRef& element, auto attribute, T value) {
        if constexpr (std::is_same_v<T, bool>)
            service.AXUIElementSetAttributeValue(element, attribute, value);
        else
            service.AXUIElementSetAttributeValue(element, attribute, AXValue(value));
    }

    /// The three writes of a snap.
    void snap(const AXUIElementRef& element, const Frame& frame) {
        write(element, ax::size, frame.size);
        write(element, ax::position, frame.origin);
        write(element, ax::size, frame.size);
        service.flushWrites();
    }

    rig::Rect screen() { return desktop.server().screen(); }
    rig::Rect visible(xcb_window_t window) { return rig::visibleFrame(display(), window); }

    bool isFullscreen(xcb_window_t window) {
        return rig::hasState(display(), window, "_NET_WM_STATE_FULLSCREEN");
    }

private:
    rig::ManagerBarrier barrier_;
};

inline rig::Rect rectOf(const Frame& frame) {
    const Box box = boxOf(frame);
    return {box.x, box.y, box.width, box.height};
}
inline Frame frameOf(const rig::Rect& rect) {
    return {{double(rect.x), double(rect.y)}, {double(rect.width), double(rect.height)}};
}

} // namespace klova::x11
