// What an onlooker sees of other programs' windows, and asks the window manager to do with them.
#pragma once

#include "desktop/Display.h"
#include "desktop/Process.h"
#include "desktop/Rect.h"

#include <limits>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace klova::rig {

struct Extents {
    int left = 0;
    int right = 0;
    int top = 0;
    int bottom = 0;
    bool operator==(const Extents&) const = default;
};

/// The window that stands for the window manager; XCB_WINDOW_NONE where none runs.
xcb_window_t managerWindow(Display& display);
/// The windows under management, oldest first.
std::vector<xcb_window_t> managedWindows(Display& display);
/// The newest window that names this process as its own.
std::optional<xcb_window_t> windowOfProcess(Display& display, pid_t process);
/// The newest window whose class or instance (WM_CLASS) is `name`.
std::optional<xcb_window_t> windowOfClass(Display& display, const std::string& name);
/// Waits for windowOfProcess, until it is settled. Throws std::runtime_error with the program's
/// output where none appears.
xcb_window_t awaitWindow(Display& display, Process& process);

/// A window on show whose class or instance starts with `name` and that no manager has put into a
/// frame, such as a menu.
std::optional<xcb_window_t> unmanagedWindow(Display& display, const std::string& name);
/// Waits for it. Throws std::runtime_error where none appears.
xcb_window_t awaitUnmanaged(Display& display, const std::string& name);

/// The rectangle a person takes for the window: borders and title included, shadows not.
Rect visibleFrame(Display& display, xcb_window_t window);
/// Where the client's own area is, in root pixels.
Rect clientArea(Display& display, xcb_window_t window);

/// `state` as in "_NET_WM_STATE_MAXIMIZED_VERT".
bool hasState(Display& display, xcb_window_t window, const std::string& state);
bool isMaximized(Display& display, xcb_window_t window);
bool isMinimized(Display& display, xcb_window_t window);
bool isManaged(Display& display, xcb_window_t window);
/// Managed, and told of its frame where it gets one and the manager tells.
bool isSettled(Display& display, xcb_window_t window);
/// 0 where there is none.
xcb_window_t activeWindow(Display& display);

/// Each of these asks and waits until it is so; false where it does not come true.
bool activate(Display& display, xcb_window_t window);
/// Not on i3, which knows no maximizing.
bool maximize(Display& display, xcb_window_t window);
bool unmaximize(Display& display, xcb_window_t window);
bool minimize(Display& display, xcb_window_t window);
/// The same for who asked otherwise.
bool awaitMinimized(Display& display, xcb_window_t window, bool minimized = true);
bool awaitActive(Display& display, xcb_window_t window);
bool awaitFrame(Display& display, xcb_window_t window, const Rect& visible, int slack = 0);
/// Un-maximizes first. Windows of fixed or stepped sizes need `slack` pixels.
bool place(Display& display, xcb_window_t window, const Rect& visible, int slack = 0);

/// How far a window may be from a size it was asked for, from WM_NORMAL_HINTS and its frame.
struct SizeLimits {
    int stepX = 1;
    int stepY = 1;
    int minWidth = 1; // of the visible frame
    int minHeight = 1;
    int maxWidth = std::numeric_limits<int>::max();
    int maxHeight = std::numeric_limits<int>::max();
};
SizeLimits sizeLimits(Display& display, xcb_window_t window);

} // namespace klova::rig
