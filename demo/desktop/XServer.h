// An X server of one's own: off screen, or nested in a window of the desktop in use.
#pragma once

#include "desktop/Process.h"
#include "desktop/Rect.h"

#include <string>
#include <vector>

namespace klova::rig {

enum class ServerKind {
    offScreen, // Xvfb
    nested,    // Xephyr, in a window on $DISPLAY
    onWayland, // Xwayland, in a window on $WAYLAND_DISPLAY and as large as its compositor has it
};

/// Size of the one screen in pixels.
struct ScreenSize {
    int width = 1440;
    int height = 900;
};

class XServer {
public:
    /// Returns once the server takes connections, on a display number of its own choice. Throws
    /// std::runtime_error where it does not come up. `options` are the server's own.
    explicit XServer(ScreenSize size = {}, ServerKind kind = ServerKind::offScreen,
                     const std::vector<std::string>& options = {});

    /// As in ":99".
    const std::string& display() const { return display_; }
    Rect screen() const { return {0, 0, size_.width, size_.height}; }
    void signal(int number) const { process_.signal(number); }

private:
    ScreenSize size_;
    std::string display_;
    Process process_;
};

} // namespace klova::rig
