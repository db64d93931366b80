// What is measured. Each adds its rows to the run's report and throws std::runtime_error where
// something does not come up or does not do what is measured.
#pragma once

#include "Run.h"

namespace klova::bench {

/// From an arrow to the window that it moves, under openbox, xfwm4, marco and kwin: against the
/// bare limit, the manager's own key, and a hotkey daemon with a command-line tool.
void measureKeyToWindow(Run& run);

/// How far a dragged window is behind the pointer, and what that costs, under openbox and xfwm4:
/// against the bare limit and the manager's own drag.
void measureDrag(Run& run);

/// How much later keys and clicks arrive that Klova has no part in.
void measureUnarmedInput(Run& run);

/// How long it takes to start until the first chord works.
void measureStartUp(Run& run);

/// What it weighs in memory and on disk.
void measureSize(Run& run);

/// How often it wakes up when nothing happens.
void measureIdling(Run& run);

/// The key, the start and the memory with many windows and many monitors.
void measureGrowth(Run& run);

} // namespace klova::bench
