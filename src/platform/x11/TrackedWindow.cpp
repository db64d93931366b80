#include "platform/x11/TrackedWindow.h"

#include "platform/x11/WindowManager.h"

#include <utility>

namespace klova::x11 {
namespace {

constexpr std::uint32_t kNothing = XCB_EVENT_MASK_NO_EVENT;
constexpr std::uint32_t kItsEnd = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
constexpr std::uint32_t kAll = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;

void selectEvents(Connection& connection, xcb_window_t window, std::uint32_t mask) {
    xcb_change_window_attributes(connection.get(), window, XCB_CW_EVENT_MASK, &mask);
}

} // namespace

TrackedWindow::TrackedWindow(Connection& connection, WindowManager& manager, X11Screens& screens,
                             xcb_window_t window)
    : placement(connection, manager, screens, window), minimizing(connection, manager, window),
      connection_(connection), id_(window), process_(processOf(connection, window)) {}

void TrackedWindow::listen() {
    if (listening_ != idle() || gone_)
        return;
    listening_ = !listening_;
    selectEvents(connection_, id_, listening_ ? kAll : kItsEnd);
}

std::shared_ptr<TrackedWindow> TrackedWindows::track(xcb_window_t window) {
    auto& entry = windows_[window];
    if (!entry) {
        entry = std::make_shared<TrackedWindow>(connection_, manager_, screens_, window);
        entry->setAwaited(window == awaited_);
        entry->listen();
    }
    return entry;
}

void TrackedWindows::watch(xcb_window_t window) {
    if (window != XCB_NONE && window != awaited_ && find(window) == nullptr)
        selectEvents(connection_, window, kItsEnd);
}

void TrackedWindows::await(xcb_window_t window) {
    if (window == awaited_)
        return;
    for (const auto id : {std::exchange(awaited_, window), window}) {
        if (auto* tracked = find(id)) {
            tracked->setAwaited(id == awaited_);
            tracked->listen();
        } else if (id != XCB_NONE) {
            id == awaited_ ? selectEvents(connection_, id, kAll) : ignore(id);
        }
    }
}

TrackedWindow* TrackedWindows::find(xcb_window_t window) {
    const auto found = windows_.find(window);
    return found == windows_.end() ? nullptr : found->second.get();
}

void TrackedWindows::handle(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7F) {
    case XCB_DESTROY_NOTIFY: {
        const auto& notify = reinterpret_cast<const xcb_destroy_notify_event_t&>(event);
        if (auto* window = find(notify.window)) {
            window->setGone();
            windows_.erase(notify.window);
        }
        break;
    }
    case XCB_CONFIGURE_NOTIFY: {
        const auto& notify = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
        if (auto* window = find(notify.window))
            window->placement.onConfigure(notify, Clock::now());
        break;
    }
    case XCB_PROPERTY_NOTIFY:
        onProperty(reinterpret_cast<const xcb_property_notify_event_t&>(event));
        break;
    default:
        break;
    }
}

void TrackedWindows::onProperty(const xcb_property_notify_event_t& event) {
    auto* window = find(event.window);
    if (window == nullptr)
        return;
    const auto& atoms = connection_.atoms();
    const auto now = Clock::now();
    if (event.atom == atoms._NET_FRAME_EXTENTS || event.atom == atoms._GTK_FRAME_EXTENTS)
        window->placement.onDecorationChanged(now);
    else if (event.atom == atoms.WM_STATE || event.atom == atoms._NET_WM_STATE)
        window->minimizing.onStateChanged(now);
}

void TrackedWindows::flush(Clock::time_point now) {
    for (auto& [id, window] : windows_) {
        window->listen();
        window->placement.flush(now);
    }
}

Deadline TrackedWindows::deadline() const {
    Deadline first;
    for (const auto& [id, window] : windows_)
        first =
            earlier(first, earlier(window->placement.deadline(), window->minimizing.deadline()));
    return first;
}

void TrackedWindows::onDeadline(Clock::time_point now) {
    for (auto& [id, window] : windows_) {
        window->placement.onDeadline(now);
        window->minimizing.onDeadline(now);
        window->listen();
    }
}

void TrackedWindows::forgetIdle() {
    std::erase_if(windows_, [this](const auto& entry) {
        const bool forgotten = entry.second.use_count() == 1 && entry.second->idle();
        if (forgotten)
            ignore(entry.first);
        return forgotten;
    });
}

/// The manager's own window may be the active one, and its end is to be heard by whoever asks for
/// the manager.
void TrackedWindows::ignore(xcb_window_t window) {
    selectEvents(connection_, window, window == manager_.checkWindow() ? kItsEnd : kNothing);
}

} // namespace klova::x11
