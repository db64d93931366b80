// Global monitors: events sent to other applications, watched but never held back.
#pragma once

#include "geometry/Frame.h"
#include "platform/Events.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace klova {

/// Names an installed monitor. A plain id, not an owner: forgetting it leaves the monitor
/// installed.
enum class MonitorId : std::uint64_t {};

class EventMonitors {
public:
    using Handler = std::function<void(const Event&)>;

    virtual ~EventMonitors() = default;

    /// Watches the event types of `mask` (a sum of `maskOf`). Motions with no button down and keys
    /// with no modifier key down may be left out. Absent when refused. May be called from inside a
    /// handler; the new monitor does not hear the running event.
    virtual std::optional<MonitorId> addGlobalMonitorForEventsMatchingMask(std::uint64_t mask,
                                                                           Handler handler) = 0;

    /// Removes a monitor, also from inside any handler, its own included. An unknown id does
    /// nothing.
    virtual void removeMonitor(MonitorId monitor) = 0;

    /// The pointer in points, origin at the bottom left of the main screen, y growing upward.
    /// While an event is dispatched it is that event's own place. What matters is its way from one
    /// event to the next: a desktop that tells only of steps may add them up from anywhere.
    virtual Point mouseLocation() = 0;
};

} // namespace klova
