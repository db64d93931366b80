// The monitors, as RandR lists them, and the row of screens that the core sees in them.
#pragma once

#include "platform/Screens.h"
#include "platform/x11/Box.h"
#include "platform/x11/Connection.h"

namespace klova::x11 {

struct Monitor {
    Box area;    ///< in root pixels
    Point shift; ///< from root pixels to the place in the row
};

/// The core takes the screens for one row without gaps whose tops are at y = 0. Monitors stand
/// anywhere: each is told of at its place in such a row, in the order of their left edges, and a
/// window with its monitor's shift. Where they stand in a row already nothing is shifted.
class X11Screens final : public Screens {
public:
    explicit X11Screens(Connection& connection);

    /// Monitors come and go: what was read is forgotten when the server says that one did.
    void handle(const xcb_generic_event_t& event);

    /// To be called when all events so far have been handled. What the root window's properties say
    /// may have changed unheard until it is watched closely.
    void watch(bool closely);

    /// Never absent and never empty: with no monitor the root window stands in as one.
    std::optional<std::vector<Screen>> screens() override;
    std::optional<Screen> mainScreen() override;

    const std::vector<Monitor>& monitors() { return inventory().monitors; }
    double scale() { return inventory().scale; } ///< root pixels a point
    const Monitor& mainMonitor() { return monitors()[inventory().primary]; }

    /// The monitor that holds the centre of a frame (root pixels), else the nearest: sideways
    /// first, as that is what the core goes by.
    const Monitor& monitorOf(const Frame& frame);

    /// The place in root pixels of a point of the row.
    Point inRoot(Point inRow);

private:
    struct Inventory {
        std::vector<Monitor> monitors; ///< in the server's order
        std::size_t primary = 0;
        double scale = 1;

        Screen screen(const Monitor& monitor) const;
    };
    const Inventory& inventory();
    Inventory read();
    static void shiftIntoRow(std::vector<Monitor>& monitors);

    Connection& connection_;
    std::optional<Inventory> inventory_;
    bool watched_ = false;
};

} // namespace klova::x11
