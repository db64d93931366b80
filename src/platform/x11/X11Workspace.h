// The applications on X11: the processes that own windows.
#pragma once

#include "platform/Workspace.h"
#include "platform/x11/Connection.h"

namespace klova::x11 {

class X11AccessibilityService;

class X11Workspace final : public Workspace {
public:
    X11Workspace(Connection& connection, X11AccessibilityService& accessibility)
        : connection_(connection), accessibility_(accessibility) {}

    /// Never absent: where no window is active the desktop answers, as process 0.
    std::optional<RunningApplication> frontmostApplication() override;
    std::vector<RunningApplication> runningApplications() override;

private:
    Connection& connection_;
    X11AccessibilityService& accessibility_;
};

} // namespace klova::x11
