// Klova's own panels on X11: their shape, their focus, and whether there is a compositor.
#pragma once

#include "platform/Panels.h"
#include "platform/x11/WindowManager.h"
#include "platform/x11/XSettings.h"

#include <functional>
#include <xcb/xcb.h>

namespace klova::x11 {

class Connection;

class X11Panels final : public Panels {
public:
    explicit X11Panels(Connection& connection);

    bool composited() const override { return composited_; }
    bool animationsEnabled() const override { return settings_.shared().animations; }
    void setFrame(Window window, const PanelFrame& frame) override;
    void activate(Window window) override;
    void setCompositedChanged(std::function<void()> changed) override;

    void handle(const xcb_generic_event_t& event);

private:
    void watchCompositor();
    xcb_timestamp_t serverTime();

    Connection& connection_;
    WindowManager manager_;
    XSettings settings_;
    xcb_window_t clock_;                    ///< never shown
    xcb_atom_t compositor_ = XCB_ATOM_NONE; ///< the selection that a compositor owns
    std::uint8_t selectionEvent_ = 0;
    bool composited_ = false;
    std::function<void()> changed_;
};

} // namespace klova::x11
