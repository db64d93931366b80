#include "app/TrayIcon.h"

#include "app/StatusIcon.h"

#include <QCursor>

namespace klova {

TrayIcon::TrayIcon() : deactivated_(statusIcon(false)), activated_(statusIcon(true)) {
    icon_.setToolTip("Klova");
    redrawTimer_.setSingleShot(true);
    QObject::connect(&redrawTimer_, &QTimer::timeout, &icon_, [this] { redraw(); });
}

void TrayIcon::setMenu(QMenu& menu) {
    icon_.setContextMenu(&menu);
    QObject::connect(&icon_, &QSystemTrayIcon::activated, &menu,
                     [&menu](QSystemTrayIcon::ActivationReason reason) {
                         if (reason == QSystemTrayIcon::Trigger)
                             menu.popup(QCursor::pos());
                     });
}

void TrayIcon::setImage(std::string_view name) {
    imageName_ = name;
    setNeedsDisplay();
}

void TrayIcon::setNeedsDisplay() { redrawTimer_.start(); }

void TrayIcon::redraw() {
    icon_.setIcon(imageName_ == "Menulet_activated" ? activated_ : deactivated_);
    icon_.show();
}

} // namespace klova
