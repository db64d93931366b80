#include "ui/AboutWindow.h"

#include <QCoreApplication>

namespace klova {

AboutWindow::AboutWindow(const QRect&, std::uint32_t, BackingStore, bool)
    : PanelWindow({.contentRect = {100, 100, 280, 245}}) {
    setWindowTitle(QCoreApplication::translate("AboutWindow", "About Klova"));
}

} // namespace klova
