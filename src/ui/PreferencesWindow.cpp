#include "ui/PreferencesWindow.h"

#include <QCoreApplication>

namespace klova {

PreferencesWindow::PreferencesWindow(const QRect&, std::uint32_t, BackingStore, bool)
    : PanelWindow({.contentRect = {100, 100, 310, 459}}) {
    setWindowTitle(QCoreApplication::translate("PreferencesWindow", "Preferences of Klova"));
}

} // namespace klova
