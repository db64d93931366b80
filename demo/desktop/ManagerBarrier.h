// Knowing that the window manager has dealt with all that was asked of it before.
#pragma once

#include "desktop/Display.h"

#include <string>

namespace klova::rig {

class ManagerBarrier {
public:
    /// On a manager that answers no questions about unmanaged windows (KWin, Fluxbox, awesome) this
    /// adds a minimized window of class "Barrier" to those under management.
    explicit ManagerBarrier(const std::string& display);

    /// Returns once the manager has answered a question asked now: every request that the server
    /// had passed on to it before is done then. False where no answer comes.
    bool pass();

private:
    xcb_window_t createWindow();
    bool askForExtents();
    bool askForState();

    Display display_;
    xcb_window_t managed_ = XCB_NONE;
};

} // namespace klova::rig
