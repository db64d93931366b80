// What Klova asks of the desktop about its monitors.
#pragma once

#include "geometry/Frame.h"

#include <optional>
#include <vector>

namespace klova {

/// A monitor. Its frame is in points, in the coordinates of "AXPosition": y of its top edge,
/// growing downward.
struct Screen {
    Frame frame;
    double backingScaleFactor = 1;
};

class Screens {
public:
    virtual ~Screens() = default;

    /// The monitors as they are now, in the desktop's order; absent where it reports no list.
    virtual std::optional<std::vector<Screen>> screens() = 0;

    /// The primary monitor, else the first.
    virtual std::optional<Screen> mainScreen() = 0;
};

} // namespace klova
