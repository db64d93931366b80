#include "geometry/ScreenManager.h"

#include "geometry/Description.h"
#include "platform/Diagnostics.h"
#include "platform/FatalError.h"

#include <algorithm>
#include <array>
#include <utility>

namespace klova {
namespace {

/// A placement in shares of the chosen screen: how far its left edge lies before the screen's
/// right one, where its top is, and how large it is.
struct Placement {
    std::string_view position;
    double back, top, width, height;
};

constexpr std::array<Placement, 8> kPlacements{{
    {"Left", 1, 0, 0.5, 1},
    {"Top", 1, 0, 1, 0.5},
    {"Right", 0.5, 0, 0.5, 1},
    {"Bottom", 1, 0.5, 1, 0.5},
    {"TopLeft", 1, 0, 0.5, 0.5},
    {"TopRight", 0.5, 0, 0.5, 0.5},
    {"BottomLeft", 1, 0.5, 0.5, 0.5},
    {"BottomRight", 0.5, 0.5, 0.5, 0.5},
}};

} // namespace

ScreenManager::ScreenManager(Screens& screens)
    : screens_(screens), screenFrames_(screens.screens()) {}

void ScreenManager::setScreenFrames(std::optional<std::vector<Screen>> screens) {
    screenFrames_ = std::move(screens);
}

std::size_t ScreenManager::getAmountOfScreens() const {
    const auto now = screens_.screens();
    return now ? now->size() : 0;
}

void ScreenManager::getScreenSizes() const {
    if (!screenFrames_ || screenFrames_->empty())
        return;
    diagnosticLine([screens = *screenFrames_] {
        std::string lines;
        for (const Screen& screen : screens)
            lines += "Screen : " + description(screen.frame) + "  :  " +
                     description(screen.backingScaleFactor) + "   \n\n";
        lines.pop_back(); // a line break follows
        return lines;
    });
}

void ScreenManager::organizeScreens() {
    const auto left = [](const Screen& screen) { return minX(screen.frame); };
    if (screenFrames_ && !std::ranges::is_sorted(*screenFrames_, {}, left))
        std::ranges::stable_sort(*screenFrames_, {}, left);
}

std::optional<ScreenManager::Choice> ScreenManager::chooseScreen(const Frame& frame) {
    organizeScreens();
    if (!screenFrames_ || screenFrames_->empty())
        fatalError("the list of screens is empty");
    double edge = minX(screenFrames_->front().frame);
    for (const Screen& screen : *screenFrames_) {
        edge += screen.frame.size.width;
        if (midX(frame) < edge)
            return Choice{screen.frame, edge};
    }
    return std::nullopt;
}

Frame ScreenManager::getCurrentScreenSize(const Frame& frame) {
    const auto choice = chooseScreen(frame);
    return choice ? choice->screen : Frame{{}, frame.size};
}

Frame ScreenManager::frameForAlignment(const Frame& frame, std::string_view position) {
    organizeScreens();
    getScreenSizes();
    const auto choice = chooseScreen(frame);
    const auto* placement = std::ranges::find(kPlacements, position, &Placement::position);
    if (!choice || placement == kPlacements.end())
        return {{}, {frame.size.width * 0.5, frame.size.height}};
    const auto [width, height] = choice->screen.size;
    return {{choice->edge - width * placement->back, height * placement->top},
            {width * placement->width, height * placement->height}};
}

Frame ScreenManager::frameForMaximizing(const Frame& frame, std::string_view rightOrLeft) {
    const auto choice = chooseScreen(frame);
    if (!choice)
        return {{}, frame.size};
    const double width = choice->screen.size.width;
    const double back = rightOrLeft == "Left" ? width : width * 0.5;
    return {{choice->edge - back, 0}, choice->screen.size};
}

Frame ScreenManager::frameForCentering(const Frame& frame) {
    const auto choice = chooseScreen(frame);
    if (!choice)
        return {{}, frame.size};
    const auto [width, height] = choice->screen.size;
    return {{(choice->edge - width * 0.5) - width * 0.25, height * 0.5 - height * 0.25},
            {width * 0.25 + width * 0.25, height * 0.25 + height * 0.25}};
}

} // namespace klova
