// Asks for the permission to read and move other applications' windows.
#pragma once

#include "platform/Desktop.h"

namespace klova {

class PrivilegeManager {
public:
    /// `desktop` is borrowed and outlives this.
    explicit PrivilegeManager(Desktop& desktop) : desktop_(desktop) {}

    /// Whether trust came while the alert was up and the alert was answered with 0.
    bool hasPrivileges() const { return hasPrivileges_; }

    /// Has the desktop prompt for the permission and, where it is missing, tells the person what
    /// to do in an alert. Returns whether it was there at the first look; granting it later
    /// takes another start.
    bool acquirePrivileges();

private:
    Desktop& desktop_;
    bool hasPrivileges_ = false;
};

} // namespace klova
