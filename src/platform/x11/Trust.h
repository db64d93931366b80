// Whether this X server lets us do our work.
#pragma once

#include "platform/TrustPrompt.h"
#include "platform/x11/Connection.h"

#include <optional>

namespace klova::x11 {

/// What is in the way; absent where nothing is.
std::optional<LackOfTrust> lackOfTrust(Connection& connection);

} // namespace klova::x11
