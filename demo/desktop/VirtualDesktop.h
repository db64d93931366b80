// A whole desktop of one's own: X server, session and window manager.
#pragma once

#include "desktop/Display.h"
#include "desktop/Session.h"
#include "desktop/WindowManager.h"
#include "desktop/XServer.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace klova::rig {

struct DesktopOptions {
    /// Empty for a desktop without one.
    std::string windowManager = "openbox";
    ScreenSize screen = {};
    ServerKind server = ServerKind::offScreen;
    /// Splits the screen in two before the window manager starts (see splitMonitors).
    bool twoMonitors = false;
    /// Has the window manager show its own tray, where it has one.
    bool managersTray = false;
    /// Called before the window manager starts, to write settings for it.
    std::function<void(Session&, Display&)> prepare = {};
};

class VirtualDesktop {
public:
    explicit VirtualDesktop(const DesktopOptions& options = {});

    XServer& server() { return server_; }
    Display& display() { return display_; }
    Session& session() { return session_; }
    /// To be asked only where there is one.
    WindowManager& manager() { return *manager_; }
    /// Starts the same manager anew, which asks the one that runs to go. Returns once it is there.
    void replaceManager();

    /// From left to right, in root pixels.
    const std::vector<Rect>& monitors() const { return monitors_; }

    Process launch(const std::vector<std::string>& command) { return session_.launch(command); }

private:
    XServer server_;
    Display display_;
    std::vector<Rect> monitors_;
    Session session_;
    std::optional<WindowManager> manager_;
};

} // namespace klova::rig
