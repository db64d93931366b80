// SIGTERM and SIGINT as a polite request to quit.
#pragma once

#include "platform/UniqueDescriptor.h"

#include <QSocketNotifier>
#include <functional>
#include <memory>

namespace klova {

class QuitSignals {
public:
    /// Holds the signals back, for this thread and all that it starts: to be made before any
    /// other thread.
    QuitSignals();

    /// Calls `quit` from the event loop for each signal, also for one that came before.
    void deliverTo(std::function<void()> quit);

private:
    UniqueDescriptor descriptor_;
    std::unique_ptr<QSocketNotifier> notifier_;
};

} // namespace klova
