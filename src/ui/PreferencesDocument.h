// The document of the preferences panel.
#pragma once

#include "ui/PanelDocument.h"
#include "ui/PreferencesWindowViewController.h"

namespace klova {

class PreferencesDocument final : public PanelDocument {
public:
    /// Owned by the document; null until `makeWindowControllers`.
    PreferencesWindowViewController* preferencesWindowViewController = nullptr;

    void makeWindowControllers() override;
};

} // namespace klova
