// The tray of the XEmbed kind.
#pragma once

#include "platform/TrayArea.h"
#include "platform/x11/SelectionWatch.h"

#include <functional>
#include <xcb/xcb.h>

namespace klova::x11 {

class Connection;

class X11TrayArea final : public TrayArea {
public:
    /// `connection` is borrowed and outlives this.
    explicit X11TrayArea(Connection& connection);

    bool present() const override { return tray_.owner() != XCB_WINDOW_NONE; }
    bool blends() const override;
    void embed(Window icon, std::function<void()> embedded) override;
    void setChanged(std::function<void()> changed) override { changed_ = std::move(changed); }

    void handle(const xcb_generic_event_t& event);

private:
    void requestDock();

    Connection& connection_;
    SelectionWatch tray_;
    std::function<void()> changed_;
    xcb_window_t icon_ = XCB_WINDOW_NONE; ///< what was asked to be embedded last
    std::function<void()> embedded_;
};

} // namespace klova::x11
