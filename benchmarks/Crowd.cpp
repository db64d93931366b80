#include "Crowd.h"

#include "desktop/Wait.h"
#include "desktop/Windows.h"

#include <unistd.h>

namespace klova::bench {

Crowd::Crowd(const std::string& display, int count) : display_(display) {
    rig::Display observer(display);
    const auto before = rig::managedWindows(observer).size();
    for (int i = 0; i < count; ++i)
        add(i);
    xcb_flush(display_.get());
    const auto managed = [&] { return rig::managedWindows(observer).size() - before; };
    rig::require(
        observer, "management of the crowd",
        [&] { return managed() == static_cast<std::size_t>(count); },
        [&] { return std::to_string(managed()); }, std::chrono::minutes(2));
}

void Crowd::add(int number) {
    const auto window = xcb_generate_id(display_.get());
    const auto x = static_cast<std::int16_t>(number % 40 * 30);
    const auto y = static_cast<std::int16_t>(number / 40 % 20 * 30 + 20);
    xcb_create_window(display_.get(), XCB_COPY_FROM_PARENT, window, display_.root(), x, y, 50, 30,
                      0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    display_.setText(window, "WM_NAME", "STRING", "One of many");
    display_.setText(window, "WM_CLASS", "STRING", std::string("crowd\0Crowd\0", 12));
    constexpr std::uint32_t userPlaced = 1, userSized = 2;
    display_.setValues(
        window, "WM_NORMAL_HINTS", "WM_SIZE_HINTS",
        {userPlaced | userSized, 0, 0, 50, 30, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
    constexpr std::uint32_t hasState = 2, iconic = 3;
    display_.setValues(window, "WM_HINTS", "WM_HINTS", {hasState, 0, iconic, 0, 0, 0, 0, 0, 0});
    display_.setValues(window, "_NET_WM_PID", "CARDINAL", {static_cast<std::uint32_t>(::getpid())});
    xcb_map_window(display_.get(), window);
}

} // namespace klova::bench
