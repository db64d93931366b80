// The monitors, as RandR lists them at each question.
#pragma once

#include "platform/Screens.h"
#include "platform/x11/Connection.h"

namespace klova::x11 {

class X11Screens final : public Screens {
public:
    explicit X11Screens(Connection& connection) : connection_(connection) {}

    /// Never absent and never empty: with no monitor the root window stands in as one.
    std::optional<std::vector<Screen>> screens() override;
    std::optional<Screen> mainScreen() override;

private:
    struct Inventory {
        std::vector<Screen> screens;
        std::size_t primary = 0;
    };
    Inventory read();

    Connection& connection_;
};

} // namespace klova::x11
