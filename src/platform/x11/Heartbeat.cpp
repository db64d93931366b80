#include "platform/x11/Heartbeat.h"

#include "platform/Diagnostics.h"

#include <cerrno>
#include <unistd.h>

namespace klova::x11 {

void Heartbeat::beat(bool holding) {
    if (!beats_)
        return;
    next_.holding = holding ? 1 : 0;
    const bool isNews =
        !last_ || last_->holding != next_.holding || last_->answered != next_.answered;
    if (!isNews && (!holding || Clock::now() < *due_))
        return;
    // The pipe does not block. A beat that a stopped guard has left no room for is still news.
    if (::write(beats_.get(), &next_, sizeof next_) == sizeof next_)
        last_ = next_;
    else if (errno == EPIPE)
        goOnAlone();
    due_ = holding ? std::optional(Clock::now() + kInterval) : std::nullopt;
}

void Heartbeat::goOnAlone() {
    beats_ = UniqueDescriptor();
    errorLine("goes on without its guard, which has ended.");
}

} // namespace klova::x11
