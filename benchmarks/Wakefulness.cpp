#include "Wakefulness.h"

#include <sched.h>

namespace klova::bench {
namespace {

void loop(const std::stop_token& stop) {
    const sched_param none{.sched_priority = 0};
    if (::sched_setscheduler(0, SCHED_IDLE, &none) != 0)
        return; // better asleep than in the way
    while (!stop.stop_requested())
        __builtin_ia32_pause();
}

} // namespace

Wakefulness::Wakefulness() {
    for (unsigned i = 0; i < std::thread::hardware_concurrency(); ++i)
        loops_.emplace_back(loop);
}

} // namespace klova::bench
