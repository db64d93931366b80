// What a process takes of the machine and of the X server.
#pragma once

#include "desktop/Display.h"

#include <ostream>
#include <sys/types.h>

namespace klova::stress {

struct Usage {
    long residentKib = 0;
    long descriptors = 0;
    long xResources = 0; // of all the process's clients
};

Usage usageOf(rig::Display& display, pid_t process);

Usage operator-(const Usage& later, const Usage& earlier);
std::ostream& operator<<(std::ostream& out, const Usage& usage);

/// Whether a difference is more than chance explains.
bool isLeak(const Usage& growth);

} // namespace klova::stress
