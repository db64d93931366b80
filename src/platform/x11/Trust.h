// Whether this X server lets us do our work.
#pragma once

#include "platform/x11/Connection.h"

#include <string>

namespace klova::x11 {

/// One sentence that says what is in the way; empty where nothing is.
std::string obstacleOf(Connection& connection);

} // namespace klova::x11
