// Watches the modifier keys and pointer drags, and keeps the event tap enabled.
#pragma once

#include "actions/SwipeManager.h"
#include "platform/Desktop.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace klova {

/// Keeps `heldModifierKeys` and `activationComplete`, shows on the status icon whether the gestures
/// are armed, and drives dragging while they are.
class KeyInputController {
public:
    /// Checks that this process may move other applications' windows and asks for it where not;
    /// without that permission the application is terminated and nothing is watched. A refused
    /// monitor is a fatal error. `desktop` is borrowed and outlives this.
    explicit KeyInputController(Desktop& desktop);

    /// Removes every monitor.
    ~KeyInputController();
    KeyInputController(const KeyInputController&) = delete;
    KeyInputController& operator=(const KeyInputController&) = delete;

    bool accessEnabled() const { return accessEnabled_; }

    /// Owned by this; null without the permission.
    SwipeManager* swipeManager() { return swipeManager_ ? &*swipeManager_ : nullptr; }

private:
    void startup();
    void addKaCMonitors();
    std::optional<MonitorId> addMonitor(std::uint64_t mask,
                                        void (KeyInputController::*handler)(const Event&));
    void flagsChanged(const Event& event);
    void modifierPressed(KeyCode code);
    void modifierReleased(KeyCode code);
    void cfRunLoopFix(const Event& event);
    void mouseDraggedHandler(const Event& event);
    void addDragMonitor();
    void removeDragMonitor();

    Desktop& desktop_;
    bool accessEnabled_ = false;
    std::optional<SwipeManager> swipeManager_;

    /// The drag monitor set last. A modifier that goes down while armed sets another one and
    /// leaves the earlier installed.
    std::optional<MonitorId> dragMonitor_;
    std::vector<MonitorId> installed_;
};

} // namespace klova
