#include "ui/AboutWindowViewController.h"

#include "ui/AboutWindow.h"

namespace klova {

AboutWindowViewController::AboutWindowViewController()
    : PanelWindowController({0, 0, 280, 245}, Qt::white) {}

void AboutWindowViewController::openAboutWindow() {
    setWindow(std::make_unique<AboutWindow>(QRect(0, 0, 280, 245), kTexturedBackground,
                                            BackingStore::buffered, false));
    aboutVc = std::make_unique<AboutVC>();
    showWindow(*aboutVc);
}

} // namespace klova
