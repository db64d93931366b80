// The tray of the demo's desktops, in the lower right corner of the screen.
#pragma once

#include "desktop/VirtualDesktop.h"

namespace klova::demo {

/// How far the middle of its only icon is from the right and from the bottom, in pixels.
inline constexpr int kIconFromRight = 36;
inline constexpr int kIconFromBottom = 35;

/// Returns once the tray takes icons. Throws std::runtime_error where it does not come up.
rig::Process startTray(rig::VirtualDesktop& desktop);

/// Waits until somebody owns this selection; throws std::runtime_error where nobody comes to.
void awaitOwner(rig::Display& display, const std::string& selection);

} // namespace klova::demo
