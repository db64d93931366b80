// The window actions: drag, minimize, reopen, maximize, center and snap.
#pragma once

#include "accessibility/AccessibilityElement.h"
#include "geometry/ScreenManager.h"
#include "platform/Desktop.h"

#include <optional>
#include <string_view>
#include <vector>

namespace klova {

/// The pointer at the previous drag step (y growing upward); absent between drags.
inline std::optional<Point> previousMousePosition;

/// Performs every action on the focused window of the frontmost application, looked up anew each
/// time. Without such a window an action does nothing; what a window makes of a write is not
/// looked at. Pointer positions have their origin at the bottom left of the main screen and y
/// growing upward, windows at the top left and y growing downward; both are in points.
class SwipeManager {
public:
    /// Forgets an earlier drag and takes the middle of the main screen, in whole points, as the
    /// clicked point. No main screen, or one whose size is no 64-bit integer, is a fatal error.
    /// `desktop` is borrowed and outlives this.
    explicit SwipeManager(Desktop& desktop);

    /// The screens as the last maximize, center or snap found them.
    std::optional<ScreenManager> screenManager;

    double currentMouseX = 0;
    double currentMouseY = 0;

    void setCurrentMouseLocation(double x, double y);

    std::optional<Point> mouseClickedPoint() const { return mouseClickedPoint_; }
    void setMouseClickedPoint(const Point& point) { mouseClickedPoint_ = point; }

    /// Makes the next drag step the first of a new drag.
    void invalidatePreviousMousePosition();

    /// Moves the window by the pointer's way since the previous step. The first step of a drag
    /// repeats the last step of the drag before it.
    void dragWindow();

    void minimizeWindow();

    /// Shows the window that was minimized last, as often as it is asked to.
    void deminimizeLastWindow();

    /// Maximizes or centers, whichever is enabled. With both the two alternate for each
    /// application: its windows share one mark.
    void manageDoubleClick();

    /// An unreadable position or size is a fatal error, here as in centering and snapping.
    void maximizeWindow();
    void centerWindow();

    /// Snaps the window to a position of `ScreenManager::frameForAlignment`.
    void moveTo(std::string_view position);

private:
    using Processes = std::vector<ProcessId>;

    std::optional<AccessibilityElement> focusedWindow() const;
    static Frame frameOf(const AccessibilityElement& window);
    bool isWindowIn(const Processes& marked) const;
    void alternate(ProcessId process);
    static void removeMark(Processes& marked, ProcessId process);

    Desktop& desktop_;
    Point mouseDifference_; ///< previous pointer position minus the current one
    std::optional<Point> mouseClickedPoint_;
    Processes windowsMaximized_;
    Processes windowsCentered_;
    std::optional<AccessibilityElement> previouslyMinimizedWindow_;
};

} // namespace klova
