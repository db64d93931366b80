// What the key side and the pointer side of the input know together.
#pragma once

#include "platform/x11/HeldKeys.h"
#include "platform/x11/KeyMap.h"
#include "platform/x11/MonitorList.h"
#include "platform/x11/X11EventTap.h"

#include <optional>

namespace klova::x11 {

struct InputState {
    Connection& connection;
    Heartbeat& heartbeat;
    KeyMap map{};
    HeldKeys held{};
    bool capsLocked = false;
    MonitorList monitors{};
    X11EventTap* tap = nullptr;   ///< borrowed; null without an installed tap
    std::optional<Point> place{}; ///< of the event that is being dispatched, in root pixels, y down

    bool armed() const { return tap != nullptr && tap->armed(); }

    /// An event of that type, with the modifiers as they are now.
    Event event(EventType type) const;

    /// Shows the tap an event that it cannot hold back, unless it is armed: then only what is
    /// held back counts.
    void observe(const Event& event) {
        if (tap != nullptr && !tap->armed())
            tap->show(event);
    }
};

} // namespace klova::x11
