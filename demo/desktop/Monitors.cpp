#include "desktop/Monitors.h"

#include <stdexcept>
#include <sys/uio.h>
#include <xcb/randr.h>
#include <xcb/xcbext.h>

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
    xcb_randr_set_monitor_request_t head;
    xcb_randr_monitor_info_t info;
    xcb_randr_output_t output; // left out where info.nOutput is 0
};

/// Sent by hand: the library's own function miscounts the bytes of this request.
void send(Display& display, MonitorRequest& request) {
    xcb_protocol_request_t protocol{1, &xcb_randr_id, XCB_RANDR_SET_MONITOR, 1};
    const auto spare = request.info.nOutput == 0 ? sizeof request.output : 0;
    // The library puts its own bytes before the first two.
    iovec parts[3] = {{}, {}, {&request, sizeof request - spare}};
    xcb_send_request(display.get(), 0, parts + 2, &protocol);
}

MonitorRequest describe(Display& display, const Rect& area, const std::string& name) {
    MonitorRequest request{};
    request.head.window = display.root();
    request.info.name = display.atom(name);
    request.info.x = static_cast<std::int16_t>(area.x);
    request.info.y = static_cast<std::int16_t>(area.y);
    request.info.width = static_cast<std::uint16_t>(area.width);
    request.info.height = static_cast<std::uint16_t>(area.height);
    request.info.width_in_millimeters = static_cast<std::uint32_t>(area.width / 4);
    request.info.height_in_millimeters = static_cast<std::uint32_t>(area.height / 4);
    return request;
}

/// The server lets no declared monitor take over another one's output.
void removeMonitors(Display& display) {
    const auto reply = owned(xcb_randr_get_monitors_reply(
        display.get(), xcb_randr_get_monitors(display.get(), display.root(), 1), nullptr));
    auto each = xcb_randr_get_monitors_monitors_iterator(reply.get());
    for (; each.rem > 0; xcb_randr_monitor_info_next(&each))
        xcb_randr_delete_monitor(display.get(), display.root(), each.data->name);
}

} // namespace

void setMonitors(Display& display, const std::vector<Rect>& monitors, const std::string& name) {
    removeMonitors(display);
    for (std::size_t i = 0; i < monitors.size(); ++i) {
        auto request = describe(display, monitors[i], name + std::to_string(i));
        request.info.primary = i == 0 ? 1 : 0;
        if (i + 1 == monitors.size()) {
            // Only a monitor that claims the real output replaces the automatic one.
            request.info.nOutput = 1;
            request.output = firstOutput(display);
        }
        send(display, request);
    }
    display.roundTrip();
}

std::vector<Rect> splitMonitors(Display& display) {
    const int width = display.screen().width_in_pixels;
    const int height = display.screen().height_in_pixels;
    // Multiples of four, so that halves and quarters are whole pixels; the right one wide enough
    // that half of it is no less than what applications ask for.
    const int left = width / 3 / 4 * 4;
    const int right = height * 4 / 5 / 4 * 4;
    std::vector<Rect> monitors = {{0, 0, left, height},
                                  {left, height - right, width - left, right}};
    setMonitors(display, monitors);
    return monitors;
}

} // namespace klova::rig
