#include "ui/AboutDocument.h"

#include "ui/Storyboard.h"

namespace klova {

void AboutDocument::makeWindowControllers() {
    auto controller = Storyboard().instantiate<AboutWindowViewController>("AboutWc");
    aboutWindowViewController = controller.get();
    addWindowController(std::move(controller));
    aboutWindowViewController->openAboutWindow();
}

} // namespace klova
