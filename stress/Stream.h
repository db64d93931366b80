// A stream of steps from a released state to a released state, and what has to be heard of it.
#pragma once

#include "Model.h"
#include "Step.h"

#include <cstddef>
#include <string>
#include <vector>

namespace klova::stress {

/// One injected key or button event.
struct Expected {
    std::uint8_t type = 0; // XCB_KEY_PRESS to XCB_BUTTON_RELEASE
    std::uint8_t detail = 0;
    Verdict verdict = Verdict::heard;
    std::size_t step = 0; // by which it is caused
};

/// What goes on while a stream plays.
struct Temper {
    /// Clicks go to a pad above all windows, so that these may do what they like; else to the
    /// focused window itself, which then has to stay where it is.
    bool pad = true;
    bool guests = false;
    bool grabs = false;
    bool monitors = false;
    /// A new keyboard map or window manager in the middle of it all.
    bool upheaval = false;
    bool superIsHeldBack = false; // by the manager, see Model
};
std::string description(const Temper& temper);

struct Stream {
    Temper temper;
    int layout = 0; // of layouts(), while it begins
    std::vector<Step> steps;
    std::vector<Expected> expected;
    int gestures = 0; // keys and clicks that are Klova's
};

} // namespace klova::stress
