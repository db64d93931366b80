// The scenes of the tour, one for each page.
#pragma once

#include "ui/gestures/Gesture.h"

namespace klova {

/// The activation keys go down one after another and up again.
extern const Gesture kHoldingKeys;

/// The window is dragged, then maximized and centered by double-clicks.
extern const Gesture kMovingWindow;

/// The window goes to halves with one arrow and to quarters with two.
extern const Gesture kSnappingWindow;

/// The window is minimized by the right button and reopened by its key.
extern const Gesture kMinimizingWindow;

} // namespace klova
