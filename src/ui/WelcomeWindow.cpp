#include "ui/WelcomeWindow.h"

namespace klova {

WelcomeWindow::WelcomeWindow(const QRect&, std::uint32_t, BackingStore, bool)
    : PanelWindow({.contentRect = {100, 100, 310, 459}}) {}

} // namespace klova
