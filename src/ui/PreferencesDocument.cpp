#include "ui/PreferencesDocument.h"

#include "ui/Storyboard.h"

namespace klova {

void PreferencesDocument::makeWindowControllers() {
    auto controller = Storyboard().instantiate<PreferencesWindowViewController>("MainWindowVC");
    preferencesWindowViewController = controller.get();
    addWindowController(std::move(controller));
    preferencesWindowViewController->openPreferencesWindow();
}

} // namespace klova
