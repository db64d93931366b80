#include "actions/SwipeManager.h"

namespace klova {

void SwipeManager::setCurrentMouseLocation(double x, double y) {
    currentMouseX = x;
    currentMouseY = y;
}

// The difference stays: it is what the next drag begins with.
void SwipeManager::invalidatePreviousMousePosition() { previousMousePosition.reset(); }

void SwipeManager::dragWindow() {
    const auto window = focusedWindow();
    if (!window)
        return;
    window->becomeMain();
    if (previousMousePosition)
        mouseDifference_ = {previousMousePosition->x - currentMouseX,
                            previousMousePosition->y - currentMouseY};
    // The pointer's y grows upward, the window's downward.
    if (const auto position = window->position())
        window->setPosition(
            Point{position->x - mouseDifference_.x, position->y + mouseDifference_.y});
    previousMousePosition = Point{currentMouseX, currentMouseY};
}

} // namespace klova
