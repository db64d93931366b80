// The monitors, as RandR lists them.
#pragma once

#include "platform/Screens.h"
#include "platform/x11/Connection.h"

namespace klova::x11 {

class X11Screens final : public Screens {
public:
    explicit X11Screens(Connection& connection);

    /// Monitors come and go: what was read is forgotten when the server says that one did.
    void handle(const xcb_generic_event_t& event);

    /// Never absent and never empty: with no monitor the root window stands in as one.
    std::optional<std::vector<Screen>> screens() override;
    std::optional<Screen> mainScreen() override;

private:
    struct Inventory {
        std::vector<Screen> screens;
        std::size_t primary = 0;
    };
    const Inventory& inventory();
    Inventory read();

    Connection& connection_;
    std::optional<Inventory> inventory_;
};

} // namespace klova::x11
