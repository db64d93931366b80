#include "desktop/ManagerBarrier.h"

#include "desktop/Wait.h"
#include "desktop/Windows.h"

namespace klova::rig {
namespace {

bool answersOnlyForManaged(Display& display) {
    const auto check = display.values(display.root(), "_NET_SUPPORTING_WM_CHECK");
    const auto name = check.empty() ? "" : display.text(check[0], "_NET_WM_NAME");
    return name == "KWin" || name == "Fluxbox" || name == "awesome";
}

/// Calls `ask` now and then until the answer is there: a manager that is just starting may lose
/// the first questions.
bool askUntil(Display& display, const std::function<void()>& ask,
              const std::function<bool()>& answered) {
    using Clock = std::chrono::steady_clock;
    Clock::time_point next{};
    return waitUntil(display, "answer of the window manager", [&] {
        if (Clock::now() >= next) {
            ask();
            next = Clock::now() + std::chrono::milliseconds(100);
        }
        return answered();
    });
}

} // namespace

ManagerBarrier::ManagerBarrier(const std::string& display) : display_(display) {
    if (!answersOnlyForManaged(display_))
        return;
    managed_ = createWindow();
    constexpr std::uint32_t hasInput = 1, hasState = 2, iconic = 3;
    display_.setValues(managed_, "WM_HINTS", "WM_HINTS",
                       {hasInput | hasState, 0, iconic, 0, 0, 0, 0, 0, 0});
    display_.setText(managed_, "WM_CLASS", "STRING", std::string("Barrier\0Barrier\0", 16));
    xcb_map_window(display_.get(), managed_);
    require(display_, "management of the barrier", [&] { return isManaged(display_, managed_); });
}

bool ManagerBarrier::pass() { return managed_ != XCB_NONE ? askForState() : askForExtents(); }

xcb_window_t ManagerBarrier::createWindow() {
    const auto window = xcb_generate_id(display_.get());
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(display_.get(), XCB_COPY_FROM_PARENT, window, display_.root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &mask);
    return window;
}

bool ManagerBarrier::askForExtents() {
    // A new window each time: some managers write an unchanged answer only once.
    const auto window = createWindow();
    const bool answered = askUntil(
        display_, [&] { display_.tellManager(window, "_NET_REQUEST_FRAME_EXTENTS", {}); },
        [&] { return !display_.values(window, "_NET_FRAME_EXTENTS").empty(); });
    xcb_destroy_window(display_.get(), window);
    xcb_flush(display_.get());
    return answered;
}

bool ManagerBarrier::askForState() {
    const std::string state = "_NET_WM_STATE_BELOW";
    const bool wanted = !hasState(display_, managed_, state);
    return askUntil(
        display_,
        [&] {
            display_.tellManager(managed_, "_NET_WM_STATE",
                                 {wanted ? 1U : 0U, display_.atom(state), 0, 2});
        },
        [&] { return hasState(display_, managed_, state) == wanted; });
}

} // namespace klova::rig
