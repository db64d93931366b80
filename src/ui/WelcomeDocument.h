// The document of the welcome panel.
#pragma once

#include "ui/PanelDocument.h"
#include "ui/WelcomeWindowViewController.h"

namespace klova {

class WelcomeDocument final : public PanelDocument {
public:
    /// Owned by the document; null until `makeWindowControllers`.
    WelcomeWindowViewController* welcomeWindowViewController = nullptr;

    void makeWindowControllers() override;
};

} // namespace klova
