#include "platform/x11/Clients.h"

#include "platform/x11/Properties.h"
#include "platform/x11/ServerGrab.h"

#include <algorithm>
#include <utility>

namespace klova::x11 {
namespace {

bool isNormal(const WindowSnapshot& snapshot) {
    return snapshot.wmState == WindowSnapshot::kNormal && !snapshot.minimized() &&
           !snapshot.furniture;
}

} // namespace

std::optional<FoundWindow> Clients::focused() {
    auto seen = std::exchange(sighting_, std::nullopt);
    const auto sighting = seen ? *std::move(seen) : look();
    if (!sighting.snapshot || !sighting.listed)
        return std::nullopt;
    if (manager_.present() && !isNormal(*sighting.snapshot))
        return std::nullopt;
    return FoundWindow{tracked_.track(sighting.active), *sighting.snapshot, true};
}

Clients::Frontmost Clients::frontmost() {
    const auto& sighting = sighting_.emplace(look());
    if (!sighting.snapshot || sighting.active == manager_.checkWindow())
        return {};
    return {tracked_.track(sighting.active)->process(), sighting.names};
}

Sighting Clients::look() {
    if (!manager_.present())
        return lookWithoutManager();
    for (int attempt = 0; attempt < 3 && !known_; ++attempt) {
        if (!glance_)
            beginGlance();
        takeGlance();
    }
    if (!known_)
        return {};
    return following_ ? *known_ : *std::exchange(known_, std::nullopt);
}

void Clients::lookAhead() {
    if (known_ || !manager_.present() || (glance_ && !glance_->answered()))
        return;
    if (glance_)
        takeGlance();
    if (!known_)
        beginGlance();
    else if (known_->snapshot)
        tracked_.track(known_->active); // which takes a question of its own
}

/// Listens first: whatever changes from the glance on is heard of.
void Clients::beginGlance() {
    if (following_)
        tracked_.await(lastActive_);
    else
        tracked_.watch(lastActive_);
    glance_.emplace(connection_, lastActive_);
}

void Clients::takeGlance() {
    known_ = glance_->take(manager_);
    lastActive_ = known_->active;
    if (lastActive_ != glance_->guess())
        known_.reset();
    glance_.reset();
}

void Clients::follow(bool following) {
    if (following == following_)
        return;
    following_ = following;
    forget();
    tracked_.await(XCB_NONE);
}

void Clients::forget() {
    glance_.reset();
    known_.reset();
}

void Clients::handle(const xcb_generic_event_t& event) {
    if (!following_)
        return;
    const auto concerns = [this](xcb_window_t window) {
        return window == tracked_.awaited() || window == connection_.root();
    };
    switch (event.response_type & 0x7F) {
    case XCB_PROPERTY_NOTIFY: {
        const auto& property = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (concerns(property.window) && isSeen(connection_.atoms(), property.atom))
            forget();
        break;
    }
    case XCB_CONFIGURE_NOTIFY:
        onConfigure(reinterpret_cast<const xcb_configure_notify_event_t&>(event));
        break;
    case XCB_DESTROY_NOTIFY:
    case XCB_GRAVITY_NOTIFY:
    case XCB_MAP_NOTIFY:
    case XCB_REPARENT_NOTIFY:
    case XCB_UNMAP_NOTIFY: // all of which name first the window that they are told of
        if (concerns(reinterpret_cast<const xcb_unmap_notify_event_t&>(event).event))
            forget();
        break;
    default:
        break;
    }
}

/// A step of a drag that came out as it was asked for need not be looked at.
void Clients::onConfigure(const xcb_configure_notify_event_t& event) {
    if (event.window != tracked_.awaited())
        return;
    const auto granted = known_ && known_->snapshot
                             ? tracked_.track(event.window)->placement.grantedBy(event)
                             : std::nullopt;
    if (granted)
        known_->snapshot->client = *granted;
    else
        forget();
}

Sighting Clients::lookWithoutManager() {
    Sighting sighting;
    sighting.active = inputFocus();
    sighting.listed = sighting.active != XCB_NONE;
    if (sighting.listed) {
        sighting.snapshot = snapshotOf(sighting.active);
        sighting.names = NamesRequest(connection_, sighting.active).take();
    }
    return sighting;
}

std::optional<WindowSnapshot> Clients::snapshotOf(xcb_window_t window) {
    tracked_.watch(window);
    return readSnapshot(connection_, manager_, window);
}

std::optional<FoundWindow> Clients::find(xcb_window_t client) {
    const auto activeNow = active();
    const auto snapshot = snapshotOf(client);
    if (!snapshot)
        return std::nullopt;
    return FoundWindow{tracked_.track(client), *snapshot, activeNow == client};
}

/// The top-level window with the input focus; a program that draws its own frame counts as well.
xcb_window_t Clients::inputFocus() {
    auto* connection = connection_.get();
    const auto focus =
        own(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
    if (!focus || focus->focus <= XCB_INPUT_FOCUS_POINTER_ROOT ||
        focus->focus == connection_.root())
        return XCB_NONE;
    const auto chain = ancestors(focus->focus);
    for (const auto window : chain)
        if (!takeItems(connection, askProperty(connection, window, connection_.atoms().WM_STATE))
                 .empty())
            return window;
    return chain.empty() ? XCB_NONE : chain.back();
}

std::vector<FoundWindow> Clients::ofProcess(ProcessId process) {
    const auto clients = manager_.clients();
    std::vector<SnapshotRequest> requests;
    xcb_get_property_cookie_t active{};
    {
        const ServerGrab grab(connection_);
        active = askProperty(connection_.get(), connection_.root(),
                             connection_.atoms()._NET_ACTIVE_WINDOW);
        for (const auto client : clients) {
            tracked_.watch(client);
            requests.emplace_back(connection_, client);
        }
    }
    const auto named = activeOf(connection_, active);
    const auto activeNow = manager_.present() ? named : inputFocus();
    std::vector<FoundWindow> found;
    for (std::size_t i = 0; i < clients.size(); ++i) {
        const auto snapshot = requests[i].take(manager_);
        if (!snapshot)
            continue;
        auto window = tracked_.track(clients[i]);
        if (window->process() == process)
            found.push_back({window, *snapshot, activeNow == clients[i]});
    }
    return found;
}

xcb_window_t Clients::active() {
    if (!manager_.present())
        return inputFocus();
    return activeOf(connection_, askProperty(connection_.get(), connection_.root(),
                                             connection_.atoms()._NET_ACTIVE_WINDOW));
}

bool Clients::isClient(xcb_window_t window) {
    return std::ranges::count(manager_.clients(), window) > 0;
}

/// `window` and its ancestors below the root, from the inside out.
std::vector<xcb_window_t> Clients::ancestors(xcb_window_t window) {
    std::vector<xcb_window_t> chain;
    while (window != XCB_NONE && window != connection_.root()) {
        const auto tree = own(xcb_query_tree_reply(
            connection_.get(), xcb_query_tree(connection_.get(), window), nullptr));
        if (!tree)
            return {};
        chain.push_back(window);
        window = tree->parent;
    }
    return chain;
}

xcb_window_t Clients::deepestAt(int x, int y) {
    xcb_window_t deepest = XCB_NONE;
    auto window = connection_.root();
    auto localX = static_cast<std::int16_t>(std::clamp(x, -32768, 32767));
    auto localY = static_cast<std::int16_t>(std::clamp(y, -32768, 32767));
    while (window != XCB_NONE) {
        auto* connection = connection_.get();
        const auto below = own(xcb_translate_coordinates_reply(
            connection,
            xcb_translate_coordinates(connection, connection_.root(), window, localX, localY),
            nullptr));
        if (window != connection_.root())
            deepest = window;
        window = below ? below->child : XCB_NONE;
    }
    return deepest;
}

xcb_window_t Clients::enclosing(xcb_window_t window) {
    const auto chain = ancestors(window);
    if (chain.empty())
        return XCB_NONE;
    const auto clients = manager_.clients();
    const auto isListed = [&](xcb_window_t one) { return std::ranges::count(clients, one) > 0; };
    if (std::any_of(chain.begin() + 1, chain.end(), isListed))
        return chain[1];
    for (const auto client : clients)
        if (const auto outer = ancestors(client); !outer.empty() && outer.back() == chain.back())
            return client;
    return XCB_NONE;
}

} // namespace klova::x11
