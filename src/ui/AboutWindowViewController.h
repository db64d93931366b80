// The controller of the about panel.
#pragma once

#include "ui/AboutVC.h"
#include "ui/PanelWindowController.h"

#include <memory>

namespace klova {

class AboutWindowViewController final : public PanelWindowController {
public:
    AboutWindowViewController();

    /// Absent until the panel was opened.
    std::unique_ptr<AboutVC> aboutVc;

    /// Opens the panel, with a new window and new content.
    void openAboutWindow();
};

} // namespace klova
