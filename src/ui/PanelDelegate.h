// What the panels ask of the application's shell.
#pragma once

#include "input/ApplicationDelegate.h"

namespace klova {

class PanelDelegate : public ApplicationDelegate {
public:
    /// Show the current settings in the status menu.
    virtual void updateActivationKeyLabel() = 0;
    virtual void updateShortCutLabels() = 0;

    /// Enables or disables the menu's entries that open panels.
    virtual void toggleShowMenuItems(bool enabled) = 0;

    virtual void openPreferences() = 0;
    virtual void closeWelcome() = 0;
    virtual void closeAbout() = 0;
};

/// The shell behind `applicationDelegate`; a fatal error where there is none, or one without
/// panels.
PanelDelegate& panelDelegate();

} // namespace klova
