#include "ui/WelcomeWindow.h"

#include <QCoreApplication>

namespace klova {

WelcomeWindow::WelcomeWindow(const QRect&, std::uint32_t, BackingStore, bool)
    : PanelWindow({.contentRect = {100, 100, 310, 459}}) {
    setWindowTitle(QCoreApplication::translate("WelcomeWindow", "Welcome to Klova"));
}

} // namespace klova
