#include "ui/AboutWindow.h"

namespace klova {

AboutWindow::AboutWindow(const QRect&, std::uint32_t, BackingStore, bool)
    : PanelWindow({.contentRect = {100, 100, 280, 245}}) {}

} // namespace klova
