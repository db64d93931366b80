// A gesture as a table of steps, and the picture of hands and window at any moment of it.
#pragma once

#include "geometry/Frame.h"

#include <array>
#include <cstddef>
#include <span>

namespace klova {

/// The screen that every scene plays on: in points, y growing downward, as all places in a scene.
inline constexpr Frame kDrawnScreen{{0, 0}, {1440, 900}};

/// What a hand presses beside the activation keys; sets of them are sums.
enum Control : unsigned {
    kNothing = 0,
    kLeftArrow = 1,
    kUpArrow = 2,
    kRightArrow = 4,
    kDownArrow = 8,
    kReopenKey = 16,
    kLeftButton = 32,
    kRightButton = 64,
};
inline constexpr std::size_t kControlCount = 7;
inline constexpr unsigned kArrows = kLeftArrow | kUpArrow | kRightArrow | kDownArrow;

/// One step. Window, pointer and activation keys travel during it from where the step before left
/// them; the controls go down or up as it begins.
struct Beat {
    double seconds = 0;
    double held = 0; ///< the share of the activation keys that is down at the end, 0 to 1
    unsigned pressed = kNothing;
    bool minimized = false; ///< at the end
    Frame window;           ///< at the end
    Point pointer;          ///< at the end
    /// In the translation context "klova"; "%1" stands for the reopen letter.
    const char* caption = "";
};

struct Gesture {
    std::span<const Beat> beats;         ///< at least one; the first is where the scene begins
    std::span<const std::size_t> stills; ///< the beats whose ends, side by side, tell it all
};

/// One moment of a scene. Equal pictures look the same.
struct Picture {
    Frame window;
    Point pointer;
    double held = 0;
    double shown = 1;   ///< 0: minimized, between: on its way
    double curtain = 1; ///< 0: the window is not there, while the scene starts anew
    std::array<double, kControlCount> lights{}; ///< how far each control is lit, 0 to 1
    const char* caption = "";

    double light(Control control) const;
    bool operator==(const Picture&) const = default;
};

/// How long the scene plays before it starts anew, in seconds.
double duration(const Gesture& gesture);

/// Every control that the scene presses.
unsigned controlsOf(const Gesture& gesture);

/// The picture `seconds` after the start; beyond the end of the scene it is that of its next round.
Picture pictureAt(const Gesture& gesture, double seconds);

/// The picture at the end of a beat.
Picture pictureAfter(const Gesture& gesture, std::size_t beat);

/// How long the beat goes on that plays at `seconds`, in seconds.
double restOfBeat(const Gesture& gesture, double seconds);

} // namespace klova
