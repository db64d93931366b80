// The desktop's events as something that an event loop can wait for.
#pragma once

#include "platform/Deadline.h"

namespace klova {

class EventSource {
public:
    using Clock = std::chrono::steady_clock;

    virtual ~EventSource() = default;

    /// Readable when events have arrived. Stays the same while the source lives.
    virtual int descriptor() const = 0;

    /// Handles all that can be read from the descriptor, and what is due. Returns false once the
    /// desktop is gone.
    virtual bool dispatch() = 0;

    /// Handles what has been read but not handled, and what was asked of the desktop since. To be
    /// called before each wait for the descriptor, which is silent about both. Returns as
    /// `dispatch` does.
    virtual bool dispatchReceived() = 0;

    /// When `dispatch` has to be called even if nothing arrives.
    virtual Deadline deadline() const = 0;
};

} // namespace klova
