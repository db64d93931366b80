// What the application's shell sets and the input handling reads.
#pragma once

#include "input/ApplicationDelegate.h"
#include "platform/EventTap.h"
#include "platform/StatusBar.h"

namespace klova {

// Everything here is borrowed; the shell owns it and clears the variable before it goes.

inline StatusItem* statusItem = nullptr;
inline EventTapPort* eventTap = nullptr; ///< null until the tap is installed
inline ApplicationDelegate* applicationDelegate = nullptr;

/// Whether one of Klova's own panels is open; dragging then rests.
inline bool panelOpen = false;

} // namespace klova
