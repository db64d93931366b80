#include "actions/SwipeManager.h"
#include "geometry/Description.h"
#include "platform/Diagnostics.h"

#include <algorithm>
#include <array>

namespace klova {
namespace {

/// The positions that are placed below the holding screen's top edge. The three at the bottom keep
/// the plain y of their target frame.
constexpr std::array<std::string_view, 5> kBelowScreenTop{"Top", "Left", "Right", "TopRight",
                                                          "TopLeft"};

} // namespace

void SwipeManager::moveTo(std::string_view position) {
    const auto window = focusedWindow();
    if (!window)
        return;
    diagnosticLine([position = window->position()] { return description(position); });
    auto& screens = screenManager.emplace(desktop_.screens);
    screens.organizeScreens();
    const Frame oldFrame = frameOf(*window);
    const Frame newFrame = screens.frameForAlignment(oldFrame, position);
    const double screenTop = minY(screens.getCurrentScreenSize(oldFrame));
    diagnosticLine([=] { return description(screenTop); });

    const bool belowTop = std::ranges::find(kBelowScreenTop, position) != kBelowScreenTop.end();
    window->setSize(newFrame.size);
    window->setPosition(
        Point{minX(newFrame), belowTop ? screenTop + minY(newFrame) : minY(newFrame)});
    window->setSize(newFrame.size); // what did not fit at the old place
}

} // namespace klova
