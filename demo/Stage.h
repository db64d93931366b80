// The desktop on which the demo plays: a window manager, a tray and three programs to arrange.
#pragma once

#include "desktop/VirtualDesktop.h"

#include <string>
#include <vector>

namespace klova::demo {

struct Program {
    std::string name;
    rig::Process process;
    xcb_window_t window = XCB_NONE;
};

class Stage {
public:
    explicit Stage(const rig::DesktopOptions& options);

    rig::VirtualDesktop& desktop() { return desktop_; }
    rig::Display& display() { return desktop_.display(); }
    rig::Rect screen() const { return desktop_.monitors().front(); }
    const std::vector<Program>& programs() const { return programs_; }

    /// By the order of their appearance.
    const Program& terminal() const { return programs_[0]; }
    const Program& editor() const { return programs_[1]; }
    const Program& clock() const { return programs_[2]; }

private:
    void start(const std::string& name, const std::vector<std::string>& command,
               const rig::Rect& place);

    rig::VirtualDesktop desktop_;
    rig::Process tray_;
    std::vector<Program> programs_;
};

} // namespace klova::demo
