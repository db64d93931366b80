#include "Trial.h"

#include "desktop/Grabs.h"

#include <algorithm>
#include <stdexcept>

namespace klova::desktops {

using namespace std::chrono_literals;

Trial::Trial(const std::filesystem::path& klova, const std::string& manager, bool managersTray)
    : desktop_({.windowManager = manager, .screen = {1440, 900}, .managersTray = managersTray}),
      klova_(desktop_, klova), barrier_(desktop_.display().name()) {
    hands().setSpacing(10ms); // quicker than a hand, and slow enough for every manager
}

/// A manager that draws new windows without a graphics card answers nothing for a while.
void Trial::awaitRest() {
    using Clock = std::chrono::steady_clock;
    auto since = Clock::now();
    rig::waitUntil(display(), "a manager at rest", [&] {
        const auto asked = Clock::now();
        barrier_.pass();
        if (Clock::now() - asked > 10ms)
            since = Clock::now();
        return Clock::now() - since > 300ms;
    });
}

void Trial::hold() {
    awaitRest();
    klova_.holdActivationKeys();
    barrier_.pass();
}

void Trial::focus(xcb_window_t window) {
    const auto stays = [&] {
        return rig::activate(display(), window) && barrier_.pass() &&
               rig::activeWindow(display()) == window;
    };
    rig::require(display(), "focus that stays", stays);
}

void Trial::prepare(xcb_window_t window, const rig::Rect& frame) {
    focus(window);
    const auto limits = rig::sizeLimits(display(), window);
    if (!rig::place(display(), window, frame, std::max(limits.stepX, limits.stepY)))
        throw std::runtime_error("the window cannot be put in its first place");
}

std::string Trial::misplaced(xcb_window_t window, rig::Place place) {
    std::string fault;
    // Decorations that come back late move a window once more.
    for (int round = 0; round < 2; ++round) {
        fault = klova_.awaitPlace(window, place, screen());
        barrier_.pass();
        if (fault.empty())
            fault = klova_.awaitPlace(window, place, screen(), 0ms);
        if (fault.empty())
            break;
    }
    return fault;
}

std::string Trial::misplaced(xcb_window_t window, const rig::Rect& frame) {
    rig::waitUntil(
        display(), "window at " + toText(frame),
        [&] { return rig::visibleFrame(display(), window) == frame; }, {}, 3s);
    barrier_.pass();
    const auto actual = rig::visibleFrame(display(), window);
    return actual == frame ? "" : "expected " + toText(frame) + ", is " + toText(actual);
}

void Trial::settle(xcb_window_t window) {
    rig::awaitStill(
        display(), "a window", [&] { return rig::visibleFrame(display(), window); }, 300ms);
}

std::string Trial::snap(xcb_window_t window, const std::vector<rig::SnapGesture>& gestures) {
    std::string fault;
    hold();
    for (const auto& gesture : gestures) {
        klova_.snap(gesture);
        fault = misplaced(window, gesture.place);
        if (!fault.empty()) {
            fault.insert(0, gesture.name + ": ");
            break;
        }
    }
    letGo();
    return fault;
}

std::string Trial::leftBehind() {
    rig::waitUntil(
        display(), "free input", [&] { return rig::stuckInput(display()).empty(); }, {}, 3s);
    return rig::stuckInput(display());
}

} // namespace klova::desktops
