#include "desktop/Precedence.h"

#include <sched.h>

namespace klova::rig {

void takePrecedence() {
    const sched_param lowest{.sched_priority = ::sched_get_priority_min(SCHED_RR)};
    ::sched_setscheduler(0, SCHED_RR, &lowest);
}

} // namespace klova::rig
