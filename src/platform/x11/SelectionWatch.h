// Who owns a selection, kept up to date.
#pragma once

#include <cstdint>
#include <string>
#include <xcb/xcb.h>

namespace klova::x11 {

class Connection;

class SelectionWatch {
public:
    /// Watches the selection `<prefix><number of the screen>`. On a server without XFixes nobody
    /// ever owns it. `connection` is borrowed and outlives this.
    SelectionWatch(Connection& connection, const std::string& prefix);

    /// XCB_WINDOW_NONE where nobody owns the selection.
    xcb_window_t owner() const { return owner_; }

    /// Whether this event says that the selection has passed to another owner, or to none.
    bool handle(const xcb_generic_event_t& event);

private:
    xcb_atom_t selection_ = XCB_ATOM_NONE;
    xcb_window_t owner_ = XCB_WINDOW_NONE;
    std::uint8_t firstEvent_ = 0; ///< of the extension, 0 without it
};

} // namespace klova::x11
