// One running Klova for each screen of a display.
#pragma once

#include "platform/x11/Connection.h"

namespace klova::x11 {

/// Owns the selection `_KLOVA_S<screen>`, which the server takes back from whoever disconnects,
/// also after a crash.
class SingleInstance {
public:
    /// Takes the selection unless somebody has it. `connection` is borrowed and outlives this.
    explicit SingleInstance(Connection& connection);

    /// Gives the selection back.
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    /// False where another instance runs.
    bool acquired() const { return acquired_; }

private:
    xcb_window_t ownerOf(xcb_atom_t selection);

    Connection& connection_;
    xcb_window_t window_;
    bool acquired_ = false;
};

} // namespace klova::x11
