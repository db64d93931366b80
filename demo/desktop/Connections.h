// Which connections of a server belong to a process.
#pragma once

#include "desktop/Display.h"

#include <cstdint>
#include <sys/types.h>
#include <vector>

namespace klova::rig {

/// A connection is known to the server by the resources that are its to name. Throws
/// std::runtime_error where the server does not tell whose they are.
std::vector<std::uint32_t> clientsOf(Display& display, pid_t process);

} // namespace klova::rig
