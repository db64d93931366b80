// How Klova finds the window to act on, and other windows.
#pragma once

#include "accessibility/AccessibilityElement.h"
#include "platform/Desktop.h"

#include <optional>
#include <string_view>
#include <vector>

namespace klova {

// A desktop without a frontmost application is a fatal error in each lookup that needs one, and so
// is an application whose list of windows cannot be read.

/// The window that every gesture acts on; null where the frontmost application has none focused.
AXUIElementRef focusedWindowOfFrontmostApplication(Desktop& desktop);

/// The windows of a process, in the order in which its application reports them.
std::vector<AXUIElementRef> windowsOfApplication(Desktop& desktop, ProcessId process);

/// The windows of the first running application with this bundle identifier; empty without one.
std::vector<AXUIElementRef> windowsOfRunningApplication(Desktop& desktop,
                                                        std::string_view bundleIdentifier);

/// The frontmost application's windows. With a bundle identifier they are those of the first
/// running application that shares it.
std::vector<AXUIElementRef> windowsOfFrontmostApplication(Desktop& desktop);

/// The first of those windows that reads as focused; null without one.
AXUIElementRef focusedWindowAmongFrontmostWindows(Desktop& desktop);

/// The window that holds a point (in points, y growing downward).
std::optional<AccessibilityElement> windowUnderPoint(Desktop& desktop, const Point& point);

} // namespace klova
