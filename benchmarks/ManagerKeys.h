// Window managers that answer to Super, Ctrl and an arrow by themselves.
#pragma once

#include "desktop/Session.h"

#include <string>

namespace klova::bench {

/// Writes settings with which the manager sends the active window to the left or the right half
/// of the screen. To be called before it starts. Throws std::runtime_error for a manager whose
/// settings are not known here.
void bindTilingKeys(rig::Session& session, const std::string& manager);

} // namespace klova::bench
