// Where a window belongs after a gesture, worked out apart from the program that moves it.
#pragma once

#include "desktop/Rect.h"
#include "desktop/Windows.h"

#include <string>
#include <vector>
#include <xcb/xcb.h>

namespace klova::rig {

enum class Place {
    left,
    right,
    top,
    bottom,
    topLeft,
    topRight,
    bottomLeft,
    bottomRight,
    wholeScreen,
    centre,
};

/// The rectangle of a window that takes any size, on a screen in root pixels.
Rect target(Place place, const Rect& screen);

/// What is wrong with a window at `actual`; empty where it is in its place. Where its limits
/// forbid the target's size it has to keep the edges that the place names: its size may fall
/// short by less than a step, or be its minimum or maximum.
std::string misplacement(Place place, const Rect& screen, const SizeLimits& limits,
                         const Rect& actual);

/// Keys pressed one after the other, by keysym, while the activation keys are held.
struct SnapGesture {
    std::string name;
    std::vector<xcb_keysym_t> keys;
    Place place;
};

/// Arrows, letters, pairs of arrows and pairs of letters, four of each.
const std::vector<SnapGesture>& snapGestures();

} // namespace klova::rig
