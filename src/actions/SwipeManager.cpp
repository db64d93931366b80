#include "actions/SwipeManager.h"

#include "accessibility/WindowLookup.h"
#include "platform/Diagnostics.h"
#include "platform/FatalError.h"

#include <cmath>
#include <utility>

namespace klova {
namespace {

double wholeHalf(double length) {
    constexpr double kLimit = 0x1p63;
    if (!(length >= -kLimit && length < kLimit)) // false for a NaN, too
        fatalError("the main screen has no usable size");
    return std::trunc(length / 2);
}

} // namespace

SwipeManager::SwipeManager(Desktop& desktop) : desktop_(desktop) {
    previousMousePosition.reset();
    const auto screen = desktop.screens.mainScreen();
    if (!screen)
        fatalError("the desktop has no main screen");
    const auto [width, height] = screen->frame.size;
    mouseClickedPoint_ = Point{wholeHalf(width), wholeHalf(height)};
}

std::optional<AccessibilityElement> SwipeManager::focusedWindow() const {
    auto window = focusedWindowOfFrontmostApplication(desktop_);
    if (window == nullptr)
        return std::nullopt;
    return AccessibilityElement(desktop_.accessibility, std::move(window));
}

Frame SwipeManager::frameOf(const AccessibilityElement& window) {
    const auto position = window.position();
    if (!position)
        fatalError("the focused window's AXPosition cannot be read");
    const auto size = window.size();
    if (!size)
        fatalError("the focused window's AXSize cannot be read");
    return {*position, *size};
}

void SwipeManager::minimizeWindow() {
    const auto window = focusedWindow();
    if (!window)
        return;
    window->minimize();
    window->resignAndMinimize();
    previouslyMinimizedWindow_ = window;
}

void SwipeManager::deminimizeLastWindow() {
    if (!previouslyMinimizedWindow_)
        return;
    previouslyMinimizedWindow_->unminimize();
    previouslyMinimizedWindow_->becomeMain();
    diagnosticLine("Optional(AccessibilityElement)");
}

} // namespace klova
