// Real window managers by name, set up so that they ask nothing and add nothing.
#pragma once

#include "desktop/Display.h"
#include "desktop/Process.h"
#include "desktop/Session.h"

#include <string>
#include <string_view>
#include <vector>

namespace klova::rig {

/// openbox, xfwm4, marco, metacity, mutter, kwin, icewm, fluxbox, jwm, i3 and awesome.
const std::vector<std::string>& windowManagerNames();

class WindowManager {
public:
    enum class Start {
        first,
        replacing, // the manager that runs
        withTray,  // on show, where it has one of its own
    };

    /// Returns once the manager announces itself on the root window. Throws std::runtime_error
    /// where the name is unknown or the manager does not come up.
    WindowManager(Session& session, Display& display, const std::string& name,
                  Start start = Start::first);

    const std::string& name() const { return name_; }
    pid_t processId() const { return process_.id(); }
    void signal(int number) const { process_.signal(number); }

    /// i3 knows no minimizing.
    bool minimizes() const { return name_ != "i3"; }

    bool hasTray() const;

    /// Some move a window back that would leave the screen.
    bool keepsWindowsOnScreen() const {
        return name_ == "marco" || name_ == "metacity" || name_ == "mutter" || name_ == "icewm";
    }

private:
    WindowManager(Session& session, Display& display, const std::string& name, Start start,
                  xcb_window_t before);

    std::string name_;
    Process process_;
};

} // namespace klova::rig
