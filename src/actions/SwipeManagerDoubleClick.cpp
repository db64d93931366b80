#include "actions/SwipeManager.h"
#include "geometry/Description.h"
#include "platform/Diagnostics.h"
#include "platform/FatalError.h"
#include "settings/DataStorageManager.h"

#include <algorithm>

namespace klova {
namespace {

void reportFrames(const Frame& oldFrame, const Frame& newFrame) {
    diagnosticLine([=] { return "oldFrame : " + description(oldFrame); });
    diagnosticLine([=] { return "newFrame : " + description(newFrame); });
}

} // namespace

void SwipeManager::manageDoubleClick() {
    const auto window = focusedWindow();
    const auto process = window ? window->pid() : std::nullopt;
    if (!process)
        return;
    if (maximizingEnabled && centeringEnabled)
        alternate(*process);
    else if (maximizingEnabled)
        maximizeWindow();
    else if (centeringEnabled)
        centerWindow();
}

void SwipeManager::alternate(ProcessId process) {
    if (isWindowIn(windowsMaximized_)) {
        centerWindow();
        removeMark(windowsMaximized_, process);
        windowsCentered_.push_back(process);
    } else if (isWindowIn(windowsCentered_)) {
        maximizeWindow();
        removeMark(windowsCentered_, process);
        windowsMaximized_.push_back(process);
    } else {
        maximizeWindow();
        windowsMaximized_.push_back(process);
    }
}

bool SwipeManager::isWindowIn(const Processes& marked) const {
    const auto window = focusedWindow();
    const auto process = window ? window->pid() : std::nullopt;
    return process && std::ranges::find(marked, *process) != marked.end();
}

void SwipeManager::removeMark(Processes& marked, ProcessId process) {
    const auto mark = std::ranges::find(marked, process);
    if (mark == marked.end())
        fatalError("the focused window's process changed within a double click");
    marked.erase(mark);
}

void SwipeManager::maximizeWindow() {
    const auto window = focusedWindow();
    if (!window)
        return;
    auto& screens = screenManager.emplace(desktop_.screens);
    const Frame oldFrame = frameOf(*window);
    const Frame newFrame = screens.frameForMaximizing(oldFrame, "Left");
    const double screenTop = minY(screens.getCurrentScreenSize(oldFrame));
    reportFrames(oldFrame, newFrame);
    window->setPosition(Point{minX(newFrame), screenTop});
    window->setSize(newFrame.size);
    window->setSize(newFrame.size); // some windows take the whole size at their new place only
}

void SwipeManager::centerWindow() {
    const auto window = focusedWindow();
    if (!window)
        return;
    auto& screens = screenManager.emplace(desktop_.screens);
    const Frame oldFrame = frameOf(*window);
    const Frame newFrame = screens.frameForCentering(oldFrame);
    reportFrames(oldFrame, newFrame);
    window->setPosition(newFrame.origin);
    window->setSize(newFrame.size);
    window->setSize(newFrame.size);
    window->setPosition(newFrame.origin); // the new size may have pushed the window aside
}

} // namespace klova
