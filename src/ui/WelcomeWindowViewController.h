// The controller of the welcome panel.
#pragma once

#include "ui/PanelWindowController.h"
#include "ui/WelcomeVC.h"

#include <memory>

namespace klova {

class WelcomeWindowViewController final : public PanelWindowController {
public:
    WelcomeWindowViewController();

    /// Absent until the panel was opened.
    std::unique_ptr<WelcomeVC> welcomeVc;

    /// Opens the panel, with a new window and new content.
    void openWelcomeWindow();
};

} // namespace klova
