#include "desktop/Wait.h"

#include <algorithm>
#include <cstdio>
#include <poll.h>
#include <stdexcept>

namespace klova::rig {
namespace {

using Clock = std::chrono::steady_clock;

/// Windows that move or change a property tell only those who asked.
void listenToRoot(Display& display) {
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(display.get(), display.root(), XCB_CW_EVENT_MASK, &mask);
}

void awaitEvent(Display& display, std::chrono::milliseconds longest) {
    xcb_flush(display.get());
    pollfd events{xcb_get_file_descriptor(display.get()), POLLIN, 0};
    ::poll(&events, 1, static_cast<int>(std::clamp<long>(longest.count(), 1, 5)));
    while (display.nextEvent() != nullptr) {
    }
}

} // namespace

bool waitUntil(Display& display, const std::string& what, const std::function<bool()>& predicate,
               const std::function<std::string()>& describe, std::chrono::milliseconds deadline) {
    if (predicate())
        return true;
    listenToRoot(display);
    const auto end = Clock::now() + deadline;
    while (Clock::now() < end) {
        awaitEvent(display,
                   std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()));
        if (predicate())
            return true;
    }
    std::fprintf(stderr, "waited %lld ms for %s%s%s\n", static_cast<long long>(deadline.count()),
                 what.c_str(), describe ? "; saw " : "", describe ? describe().c_str() : "");
    return false;
}

void require(Display& display, const std::string& what, const std::function<bool()>& predicate,
             const std::function<std::string()>& describe, std::chrono::milliseconds deadline) {
    if (!waitUntil(display, what, predicate, describe, deadline))
        throw std::runtime_error("no " + what);
}

void awaitOutput(Display& display, const Process& program, const std::string& part) {
    require(
        display, part, [&] { return program.output().find(part) != std::string::npos; },
        [&] { return program.output(); });
}

} // namespace klova::rig
