#include "ui/PreferencesWindowViewController.h"

#include "ui/PreferencesWindow.h"

namespace klova {

PreferencesWindowViewController::PreferencesWindowViewController()
    : PanelWindowController({0, 0, 310, 459}) {}

void PreferencesWindowViewController::openPreferencesWindow() {
    setWindow(std::make_unique<PreferencesWindow>(QRect(0, 0, 310, 459), kTexturedBackground,
                                                  BackingStore::buffered, false));
    preferenceVc = std::make_unique<PreferencesVC>();
    showWindow(*preferenceVc);
}

} // namespace klova
