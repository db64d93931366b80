#include "platform/x11/WindowSnapshot.h"

#include "platform/x11/Properties.h"
#include "platform/x11/ServerGrab.h"
#include "platform/x11/WindowManager.h"

#include <algorithm>
#include <initializer_list>

namespace klova::x11 {
namespace {

/// Any program may write anything: no edge is wider than the server's coordinates reach.
Edges edgesOf(const std::vector<std::uint32_t>& items) {
    if (items.size() < 4)
        return {};
    const auto width = [&](std::size_t i) { return static_cast<int>(std::min(items[i], 32767U)); };
    return {width(0), width(1), width(2), width(3)};
}

bool anyOf(const std::vector<std::uint32_t>& items, std::initializer_list<xcb_atom_t> atoms) {
    return std::ranges::find_first_of(items, atoms) != items.end();
}

/// The top-level window that holds `window`: itself where its parent is the root.
xcb_window_t outermost(Connection& connection, xcb_window_t window) {
    for (;;) {
        const auto tree = own(xcb_query_tree_reply(
            connection.get(), xcb_query_tree(connection.get(), window), nullptr));
        if (!tree || tree->parent == connection.root() || tree->parent == XCB_NONE)
            return window;
        window = tree->parent;
    }
}

/// For managers that publish no extents: how far the frame window reaches beyond the client.
Edges decorationByParents(Connection& connection, xcb_window_t window, const Box& client) {
    const auto frame = outermost(connection, window);
    const auto geometry = own(xcb_get_geometry_reply(
        connection.get(), xcb_get_geometry(connection.get(), frame), nullptr));
    if (!geometry)
        return {};
    const int border = 2 * geometry->border_width;
    const Box outer{geometry->x, geometry->y, geometry->width + border, geometry->height + border};
    return {client.x - outer.x, outer.right() - client.right(), client.y - outer.y,
            outer.bottom() - client.bottom()};
}

} // namespace

SnapshotRequest::SnapshotRequest(Connection& connection, xcb_window_t window)
    : connection_(connection), window_(window),
      geometry_(xcb_get_geometry(connection.get(), window)),
      origin_(xcb_translate_coordinates(connection.get(), window, connection.root(), 0, 0)),
      decoration_(askProperty(connection.get(), window, connection.atoms()._NET_FRAME_EXTENTS)),
      shadow_(askProperty(connection.get(), window, connection.atoms()._GTK_FRAME_EXTENTS)),
      wmState_(askProperty(connection.get(), window, connection.atoms().WM_STATE)),
      states_(askProperty(connection.get(), window, connection.atoms()._NET_WM_STATE)),
      types_(askProperty(connection.get(), window, connection.atoms()._NET_WM_WINDOW_TYPE)) {}

std::optional<WindowSnapshot> SnapshotRequest::take(WindowManager& manager) {
    auto* connection = connection_.get();
    WindowSnapshot snapshot;
    const auto geometry = own(xcb_get_geometry_reply(connection, geometry_, nullptr));
    const auto origin = own(xcb_translate_coordinates_reply(connection, origin_, nullptr));
    if (geometry && origin) {
        snapshot.client = {origin->dst_x, origin->dst_y, geometry->width, geometry->height};
        snapshot.border = geometry->border_width;
    }
    // Every answer is taken, also of a window that is gone: none may stay behind.
    takeStates(snapshot);
    takeDecoration(snapshot, manager);
    if (!geometry || !origin)
        return std::nullopt;
    return snapshot;
}

void SnapshotRequest::discard() {
    for (const auto sequence :
         {geometry_.sequence, origin_.sequence, decoration_.sequence, shadow_.sequence,
          wmState_.sequence, states_.sequence, types_.sequence})
        xcb_discard_reply(connection_.get(), sequence);
}

void SnapshotRequest::takeStates(WindowSnapshot& snapshot) {
    const auto& atoms = connection_.atoms();
    if (const auto items = takeItems(connection_.get(), wmState_); !items.empty())
        snapshot.wmState = items[0];
    const auto states = takeItems(connection_.get(), states_);
    snapshot.maximized =
        anyOf(states, {atoms._NET_WM_STATE_MAXIMIZED_HORZ, atoms._NET_WM_STATE_MAXIMIZED_VERT});
    snapshot.fullscreen = anyOf(states, {atoms._NET_WM_STATE_FULLSCREEN});
    snapshot.hidden = anyOf(states, {atoms._NET_WM_STATE_HIDDEN});
    snapshot.furniture =
        anyOf(takeItems(connection_.get(), types_),
              {atoms._NET_WM_WINDOW_TYPE_DESKTOP, atoms._NET_WM_WINDOW_TYPE_DOCK,
               atoms._NET_WM_WINDOW_TYPE_SPLASH, atoms._NET_WM_WINDOW_TYPE_NOTIFICATION});
}

void SnapshotRequest::takeDecoration(WindowSnapshot& snapshot, WindowManager& manager) {
    const auto published = takeItems(connection_.get(), decoration_);
    snapshot.shadow = edgesOf(takeItems(connection_.get(), shadow_));
    if (!manager.present()) {
        snapshot.decoration = {snapshot.border, snapshot.border, snapshot.border, snapshot.border};
    } else if (manager.publishesDecoration()) {
        snapshot.decoration = edgesOf(published);
        snapshot.decorationPublished = true;
    } else {
        snapshot.decoration = decorationByParents(connection_, window_, snapshot.client);
    }
}

std::optional<WindowSnapshot> readSnapshot(Connection& connection, WindowManager& manager,
                                           xcb_window_t window) {
    std::optional<SnapshotRequest> request;
    {
        const ServerGrab grab(connection);
        request.emplace(connection, window);
    }
    return request->take(manager);
}

} // namespace klova::x11
