// Everything about one window that an action needs, read in one moment of the server.
#pragma once

#include "platform/x11/Box.h"
#include "platform/x11/Connection.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace klova::x11 {

class WindowManager;

struct WindowSnapshot {
    static constexpr std::uint32_t kNormal = 1;
    static constexpr std::uint32_t kIconic = 3;

    Box client;       ///< the client window without its border, in root pixels
    Edges decoration; ///< what the manager draws around it
    Edges shadow; ///< what the client draws itself outside of what a person takes for the window
    std::uint32_t wmState = 0; ///< 0: withdrawn, or not managed at all
    int border = 0;            ///< width of the client window's own border
    bool decorationPublished = false;
    bool maximized = false;
    bool fullscreen = false;
    bool hidden = false;
    bool furniture = false; ///< a desktop, a dock, a splash screen, a notification

    Edges extents() const { return decoration - shadow; }
    /// The frame that a person sees.
    Box frame() const { return grown(client, extents()); }
    /// Managers refuse to move a maximized or fullscreen window, in silence.
    bool movable() const { return !maximized && !fullscreen; }
    bool minimized() const { return hidden || wmState == kIconic; }
};

/// The requests for one snapshot, sent and not yet answered.
class SnapshotRequest {
public:
    SnapshotRequest(Connection& connection, xcb_window_t window);

    /// Absent when the window is gone. To be called once, unless the answer is discarded.
    std::optional<WindowSnapshot> take(WindowManager& manager);
    void discard();

private:
    void takeStates(WindowSnapshot& snapshot);
    void takeDecoration(WindowSnapshot& snapshot, WindowManager& manager);

    Connection& connection_;
    xcb_window_t window_;
    xcb_get_geometry_cookie_t geometry_;
    xcb_translate_coordinates_cookie_t origin_;
    xcb_get_property_cookie_t decoration_;
    xcb_get_property_cookie_t shadow_;
    xcb_get_property_cookie_t wmState_;
    xcb_get_property_cookie_t states_;
    xcb_get_property_cookie_t types_;
};

std::optional<WindowSnapshot> readSnapshot(Connection& connection, WindowManager& manager,
                                           xcb_window_t window);

} // namespace klova::x11
