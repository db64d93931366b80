// The controller of the preferences panel.
#pragma once

#include "ui/PanelWindowController.h"
#include "ui/PreferencesVC.h"

#include <memory>

namespace klova {

class PreferencesWindowViewController final : public PanelWindowController {
public:
    PreferencesWindowViewController();

    /// Absent until the panel was opened.
    std::unique_ptr<PreferencesVC> preferenceVc;

    /// Opens the panel, with a new window and new content.
    void openPreferencesWindow();
};

} // namespace klova
