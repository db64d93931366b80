// The guard: a process of its own that frees the keyboard when this one no longer answers.
#pragma once

#include "platform/UniqueDescriptor.h"

namespace klova::x11 {

/// Forks the guard, which ends with the last writer of the pipe returned here; a Heartbeat belongs
/// at its end. A keyboard that stays grabbed for 1.6 seconds without a beat is freed by ending
/// this process. To be called before there is a connection or a second thread. Where the system
/// has no room for another process a line says so, and the descriptor is empty.
UniqueDescriptor startGuard();

} // namespace klova::x11
