#include "desktop/Monitors.h"

#include <stdexcept>
#include <xcb/randr.h>

namespace klova::rig {
namespace {

xcb_randr_output_t firstOutput(Display& display) {
    const auto resources = owned(xcb_randr_get_screen_resources_current_reply(
        display.get(), xcb_randr_get_screen_resources_current(display.get(), display.root()),
        nullptr));
    if (!resources || resources->num_outputs == 0)
        throw std::runtime_error("the X server has no output");
    return *xcb_randr_get_screen_resources_current_outputs(resources.get());
}

struct MonitorRequest {
    xcb_randr_monitor_info_t info;
    xcb_randr_output_t output;
};

} // namespace

void setMonitors(Display& display, const std::vector<Rect>& monitors) {
    // Only a monitor that claims the real output replaces the automatic one.
    std::uint16_t outputs = 1;
    for (const auto& monitor : monitors) {
        MonitorRequest request{};
        request.info.name = display.atom("RIG" + std::to_string(&monitor - monitors.data()));
        request.info.primary = outputs == 1 ? 1 : 0;
        request.info.nOutput = outputs;
        request.info.x = static_cast<std::int16_t>(monitor.x);
        request.info.y = static_cast<std::int16_t>(monitor.y);
        request.info.width = static_cast<std::uint16_t>(monitor.width);
        request.info.height = static_cast<std::uint16_t>(monitor.height);
        request.info.width_in_millimeters = static_cast<std::uint32_t>(monitor.width / 4);
        request.info.height_in_millimeters = static_cast<std::uint32_t>(monitor.height / 4);
        request.output = outputs == 1 ? firstOutput(display) : 0;
        xcb_randr_set_monitor(display.get(), display.root(), &request.info);
        outputs = 0;
    }
    display.roundTrip();
}

std::vector<Rect> splitMonitors(Display& display) {
    const int width = display.screen().width_in_pixels;
    const int height = display.screen().height_in_pixels;
    // Multiples of four, so that halves and quarters are whole pixels.
    const int left = width * 4 / 9 / 4 * 4;
    const std::vector<Rect> monitors = {{0, 0, left, height},
                                        {left, 0, width - left, height * 4 / 5 / 4 * 4}};
    setMonitors(display, monitors);
    return monitors;
}

} // namespace klova::rig
