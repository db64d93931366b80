#include "platform/x11/Clients.h"

#include "platform/x11/Properties.h"

#include <algorithm>
#include <utility>

namespace klova::x11 {
namespace {

bool isNormal(const WindowSnapshot& snapshot) {
    return snapshot.wmState == WindowSnapshot::kNormal && !snapshot.minimized() &&
           !snapshot.furniture;
}

/// In the same moment as the snapshot: a window that is tracked is never destroyed unheard.
void selectStructure(Connection& connection, xcb_window_t window) {
    const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection.get(), window, XCB_CW_EVENT_MASK, &mask);
}

} // namespace

std::optional<FoundWindow> Clients::focused() {
    const auto seen = std::exchange(sighting_, std::nullopt);
    const auto sighting = seen ? *seen : look();
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
    return {tracked_.track(sighting.active)->process(), sighting.active};
}

/// The window has to be named before its properties can be asked for in the same moment as which
/// one is active: the guess is nearly always right, and one round trip is then enough.
Clients::Sighting Clients::look() {
    for (int attempt = 0; attempt < 3; ++attempt) {
        const auto guess = lastActive_;
        auto sighting = lookAt(guess);
        lastActive_ = sighting.active;
        if (sighting.active == guess)
            return sighting;
    }
    return {};
}

Clients::Sighting Clients::lookAt(xcb_window_t guess) {
    if (!manager_.present())
        return lookWithoutManager(guess);
    auto* connection = connection_.get();
    std::optional<SnapshotRequest> request;
    xcb_get_property_cookie_t active{};
    xcb_get_property_cookie_t clients{};
    {
        const ServerGrab grab(connection_);
        active =
            askProperty(connection, connection_.root(), connection_.atoms()._NET_ACTIVE_WINDOW);
        clients = askProperty(connection, connection_.root(), connection_.atoms()._NET_CLIENT_LIST);
        if (guess != XCB_NONE) {
            if (!tracked_.knows(guess))
                selectStructure(connection_, guess);
            request.emplace(connection_, guess);
        }
    }
    Sighting sighting;
    sighting.active = activeOf(active);
    sighting.listed = std::ranges::count(takeItems(connection, clients), sighting.active) > 0;
    if (request)
        sighting.snapshot = request->take(manager_);
    return sighting;
}

Clients::Sighting Clients::lookWithoutManager(xcb_window_t guess) {
    Sighting sighting;
    sighting.active = inputFocus();
    sighting.listed = sighting.active != XCB_NONE;
    if (sighting.listed && sighting.active == guess)
        sighting.snapshot = snapshotOf(guess);
    return sighting;
}

/// What `_NET_ACTIVE_WINDOW` names. Some managers make it two items long; the root is no window
/// of anybody's, whoever says so.
xcb_window_t Clients::activeOf(xcb_get_property_cookie_t cookie) {
    const auto items = takeItems(connection_.get(), cookie);
    return items.empty() || items[0] == connection_.root() ? XCB_NONE : items[0];
}

std::optional<WindowSnapshot> Clients::snapshotOf(xcb_window_t window) {
    if (!tracked_.knows(window))
        selectStructure(connection_, window);
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
            if (!tracked_.knows(client))
                selectStructure(connection_, client);
            requests.emplace_back(connection_, client);
        }
    }
    const auto named = activeOf(active);
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
    return activeOf(
        askProperty(connection_.get(), connection_.root(), connection_.atoms()._NET_ACTIVE_WINDOW));
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
