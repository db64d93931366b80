// The status item as an icon in the desktop's tray.
#pragma once

#include "platform/StatusBar.h"

#include <QIcon>
#include <QMenu>
#include <QSystemTrayIcon>
#include <QTimer>
#include <string>

namespace klova {

/// Appears once there is a tray, which may come later or never.
class TrayIcon final : public StatusItem, public StatusButton {
public:
    TrayIcon();

    /// Shows `menu`, which is borrowed, on a click.
    void setMenu(QMenu& menu);

    StatusButton* button() override { return this; }
    bool hasImage() const override { return !imageName_.empty(); }
    void setImage(std::string_view name) override;
    void setNeedsDisplay() override;

private:
    void redraw();

    QIcon deactivated_;
    QIcon activated_;
    std::string imageName_;
    QSystemTrayIcon icon_;
    QTimer redrawTimer_; ///< queues the redraw behind all that waits in the event loop
};

} // namespace klova
