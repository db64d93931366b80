#include "Listener.h"

#include <algorithm>
#include <ctime>
#include <poll.h>

namespace klova::bench {

void listen(rig::Display& display, xcb_window_t window, std::uint32_t mask) {
    xcb_change_window_attributes(display.get(), window, XCB_CW_EVENT_MASK, &mask);
    display.roundTrip();
}

void awaitReadable(rig::Display& display, Clock::time_point deadline) {
    const auto left = std::max(deadline - Clock::now(), Clock::duration::zero());
    const auto seconds = std::chrono::floor<std::chrono::seconds>(left);
    const timespec time{seconds.count(), (left - seconds).count()};
    pollfd readable{xcb_get_file_descriptor(display.get()), POLLIN, 0};
    ::ppoll(&readable, 1, &time, nullptr);
}

std::optional<Clock::time_point>
awaitEvent(rig::Display& display, const std::function<bool(const xcb_generic_event_t&)>& predicate,
           Clock::duration patience) {
    const auto end = Clock::now() + patience;
    while (true) {
        while (const auto event = display.nextEvent()) {
            const auto now = Clock::now();
            if (predicate(*event))
                return now;
        }
        if (Clock::now() >= end)
            return std::nullopt;
        awaitReadable(display, end);
    }
}

} // namespace klova::bench
