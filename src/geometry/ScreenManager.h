// The attached screens: on which of them a window lies, and where a placement puts it.
#pragma once

#include "geometry/Frame.h"
#include "platform/Screens.h"

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace klova {

/// A snapshot of the screens, cheap enough to be made anew for each gesture. All frames are in
/// points and in the coordinates of "AXPosition", y growing downward.
///
/// The screens count as one row from left to right: the sum of their widths decides, and neither
/// gaps between them nor their vertical places are looked at.
class ScreenManager {
public:
    /// Takes the desktop's current list of screens. `screens` is borrowed and outlives this.
    explicit ScreenManager(Screens& screens);

    /// The screens in the desktop's order until `organizeScreens`; absent where the desktop
    /// reported no list.
    const std::optional<std::vector<Screen>>& screenFrames() const { return screenFrames_; }
    void setScreenFrames(std::optional<std::vector<Screen>> screens);

    /// How many screens the desktop has now, whatever `screenFrames` says; 0 without a list.
    std::size_t getAmountOfScreens() const;

    /// Writes the list to the diagnostic output, one item a screen.
    void getScreenSizes() const;

    /// Sorts `screenFrames` by left edge; equal ones keep the desktop's order.
    void organizeScreens();

    /// The frame of the screen that holds `frame`: the first from the left whose right edge lies
    /// beyond its horizontal centre. Beyond the last screen: origin (0, 0) and the size of
    /// `frame`. Without any screen this, as each operation below, is a fatal error.
    Frame getCurrentScreenSize(const Frame& frame);

    /// The half or quarter of the holding screen named by `position` ("Left", "Right", "Top",
    /// "Bottom", "TopLeft", "TopRight", "BottomLeft", "BottomRight"), its top taken as y = 0.
    /// Any other name, or no holding screen: at (0, 0), half as wide as `frame` and as high.
    Frame frameForAlignment(const Frame& frame, std::string_view position);

    /// A frame of the holding screen's size, its top taken as y = 0: at the screen's left edge for
    /// "Left", at its middle for any other text. No holding screen: at (0, 0), as large as `frame`.
    Frame frameForMaximizing(const Frame& frame, std::string_view rightOrLeft);

    /// Half the holding screen's width and height about its centre, its top taken as y = 0. No
    /// holding screen: at (0, 0), as large as `frame`.
    Frame frameForCentering(const Frame& frame);

private:
    struct Choice {
        Frame screen;
        double edge = 0; ///< the first screen's left edge plus all widths up to this screen's own
    };
    std::optional<Choice> chooseScreen(const Frame& frame);

    Screens& screens_;
    std::optional<std::vector<Screen>> screenFrames_;
};

} // namespace klova
