// The desktop's shared settings (the XSETTINGS protocol), as far as Klova follows them.
#pragma once

#include "platform/x11/ClickCounter.h"

#include <cstdint>
#include <span>
#include <xcb/xcb.h>

namespace klova::x11 {

class Connection;

struct SharedSettings {
    ClickLimits clicks;
    bool animations = true; ///< false where the person asked for less motion

    bool operator==(const SharedSettings&) const = default;
};

/// What a settings property says; the defaults for what it lacks, also where the bytes are not
/// what the protocol says.
SharedSettings parseSettings(std::span<const std::uint8_t> property);

/// Follows the desktop's settings manager, which may come, change and go at any time.
class XSettings {
public:
    explicit XSettings(Connection& connection);

    const SharedSettings& shared() const { return shared_; }
    void handle(const xcb_generic_event_t& event);

private:
    void findManager();
    void read();

    Connection& connection_;
    xcb_atom_t selection_ = XCB_ATOM_NONE;
    xcb_window_t manager_ = XCB_WINDOW_NONE;
    SharedSettings shared_;
};

} // namespace klova::x11
