// The desktop's events as something that an event loop can wait for.
#pragma once

#include <chrono>
#include <optional>

namespace klova {

class EventSource {
public:
    using Clock = std::chrono::steady_clock;

    virtual ~EventSource() = default;

    /// Readable when events have arrived. Stays the same while the source lives.
    virtual int descriptor() const = 0;

    /// Handles every event that has arrived. To be called whenever the descriptor is readable, and
    /// before each wait for it: events may be queued while the descriptor is silent. Returns false
    /// once the desktop is gone.
    virtual bool dispatch() = 0;

    /// When `dispatch` has to be called even if nothing arrives; absent: never.
    virtual std::optional<Clock::time_point> deadline() const = 0;
};

} // namespace klova
