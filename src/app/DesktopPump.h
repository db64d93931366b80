// Lets the event loop wait for the desktop's events.
#pragma once

#include "platform/EventSource.h"

#include <QSocketNotifier>
#include <QTimer>
#include <functional>
#include <optional>
#include <poll.h>

namespace klova {

/// Wakes the loop when the source has something to do and at no other time. Needs a running
/// QApplication, and is the only one; `source` is borrowed. `gone` is called when the desktop has
/// ended. What handles the source's events must not run a loop of its own.
class DesktopPump {
public:
    DesktopPump(EventSource& source, std::function<void()> gone);
    ~DesktopPump();
    DesktopPump(const DesktopPump&) = delete;
    DesktopPump& operator=(const DesktopPump&) = delete;

private:
    static int wait(pollfd* descriptors, unsigned count, int timeout);
    bool mayLinger(EventSource::Clock::time_point end) const;
    void handled(bool there);
    void setTimer(Deadline deadline);

    EventSource& source_;
    std::function<void()> gone_;
    QSocketNotifier notifier_;
    QTimer timer_;
    Deadline deadline_; ///< for which the timer is set
};

} // namespace klova
