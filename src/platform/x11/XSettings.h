// The desktop's shared settings (the XSETTINGS protocol), as far as clicks are concerned.
#pragma once

#include "platform/x11/ClickCounter.h"

#include <cstdint>
#include <span>
#include <xcb/xcb.h>

namespace klova::x11 {

class Connection;

/// The click limits in a settings property; the defaults for what it lacks, also where the bytes
/// are not what the protocol says.
ClickLimits parseClickLimits(std::span<const std::uint8_t> property);

/// Follows the desktop's settings manager, which may come, change and go at any time.
class XSettings {
public:
    explicit XSettings(Connection& connection);

    const ClickLimits& clickLimits() const { return limits_; }
    void handle(const xcb_generic_event_t& event);

private:
    void findManager();
    void read();

    Connection& connection_;
    xcb_atom_t selection_ = XCB_ATOM_NONE;
    xcb_window_t manager_ = XCB_WINDOW_NONE;
    ClickLimits limits_;
};

} // namespace klova::x11
