#include "ui/WelcomeDocument.h"

#include "ui/Storyboard.h"

namespace klova {

void WelcomeDocument::makeWindowControllers() {
    auto controller = Storyboard().instantiate<WelcomeWindowViewController>("WelcomeWc");
    welcomeWindowViewController = controller.get();
    addWindowController(std::move(controller));
    welcomeWindowViewController->openWelcomeWindow();
}

} // namespace klova
