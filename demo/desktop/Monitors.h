// Several monitors on one X screen.
#pragma once

#include "desktop/Display.h"
#include "desktop/Rect.h"

#include <string>
#include <vector>

namespace klova::rig {

/// Declares these rectangles the monitors of the screen, instead of the one there was (RandR
/// 1.5), called `name` and a number. The first is the primary one. The last one claims the server's
/// only output: GTK, and so xfwm4, marco and metacity, know of no other and keep windows on it.
void setMonitors(Display& display, const std::vector<Rect>& monitors,
                 const std::string& name = "RIG");

/// Two side by side, of different widths and heights, the right one standing lower.
std::vector<Rect> splitMonitors(Display& display);

} // namespace klova::rig
