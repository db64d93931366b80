#include "app/TrayIcon.h"

#include "app/StatusIcon.h"

#include <QCursor>
#include <QMetaObject>
#include <utility>

namespace klova {

TrayIcon::TrayIcon() : deactivated_(statusIcon(false)), activated_(statusIcon(true)) {
    icon_.setToolTip("Klova");
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

void TrayIcon::setNeedsDisplay() {
    if (std::exchange(redrawQueued_, true))
        return;
    QMetaObject::invokeMethod(
        &icon_, [this] { redraw(); }, Qt::QueuedConnection);
}

void TrayIcon::redraw() {
    redrawQueued_ = false;
    icon_.setIcon(imageName_ == "Menulet_activated" ? activated_ : deactivated_);
    icon_.show();
}

} // namespace klova
