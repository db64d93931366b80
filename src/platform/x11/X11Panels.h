// Klova's own panels on X11: their shape, their focus, and whether there is a compositor.
#pragma once

#include "platform/Panels.h"
#include "platform/x11/SelectionWatch.h"
#include "platform/x11/WindowManager.h"
#include "platform/x11/XSettings.h"

#include <functional>
#include <xcb/xcb.h>

namespace klova::x11 {

class Connection;

class X11Panels final : public Panels {
public:
    X11Panels(Connection& connection, WindowManager& manager, const XSettings& settings);

    bool composited() const override { return compositor_.owner() != XCB_WINDOW_NONE; }
    bool animationsEnabled() const override { return settings_.shared().animations; }
    void setFrame(Window window, const PanelFrame& frame) override;
    void activate(Window window) override;
    void setCompositedChanged(std::function<void()> changed) override;

    void handle(const xcb_generic_event_t& event);

private:
    xcb_timestamp_t serverTime();

    Connection& connection_;
    WindowManager& manager_;
    const XSettings& settings_;
    SelectionWatch compositor_;
    xcb_window_t clock_; ///< never shown
    std::function<void()> changed_;
};

} // namespace klova::x11
