// The document of the about panel.
#pragma once

#include "ui/AboutWindowViewController.h"
#include "ui/PanelDocument.h"

namespace klova {

class AboutDocument final : public PanelDocument {
public:
    /// Owned by the document; null until `makeWindowControllers`.
    AboutWindowViewController* aboutWindowViewController = nullptr;

    void makeWindowControllers() override;
};

} // namespace klova
