// What Klova asks of the desktop about applications.
#pragma once

#include "platform/AccessibilityService.h"

#include <optional>
#include <string>
#include <vector>

namespace klova {

struct RunningApplication {
    ProcessId processIdentifier = 0;
    std::optional<std::string> bundleIdentifier;
    std::optional<std::string> localizedName;
};

class Workspace {
public:
    virtual ~Workspace() = default;

    /// The application whose window is active, or was when the keys were taken from it to be held
    /// back. Where none is, the desktop itself stands in as an application without a focused
    /// window.
    virtual std::optional<RunningApplication> frontmostApplication() = 0;

    /// Every application with a window, in the order in which they came.
    virtual std::vector<RunningApplication> runningApplications() = 0;
};

} // namespace klova
