#include "ui/WelcomeWindowViewController.h"

#include "ui/WelcomeWindow.h"

namespace klova {

WelcomeWindowViewController::WelcomeWindowViewController()
    : PanelWindowController({0, 0, 310, 459}, Qt::white) {}

void WelcomeWindowViewController::openWelcomeWindow() {
    setWindow(std::make_unique<WelcomeWindow>(QRect(0, 0, 310, 459), kTexturedBackground,
                                              BackingStore::buffered, false));
    welcomeVc = std::make_unique<WelcomeVC>();
    showWindow(*welcomeVc);
}

} // namespace klova
