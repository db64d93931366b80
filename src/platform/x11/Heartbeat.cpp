#include "platform/x11/Heartbeat.h"

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
    // The pipe does not block: a guard that sleeps through a pipe full of beats is of no use.
    [[maybe_unused]] const auto written = ::write(beats_.get(), &next_, sizeof next_);
    last_ = next_;
    due_ = holding ? std::optional(Clock::now() + kInterval) : std::nullopt;
}

} // namespace klova::x11
