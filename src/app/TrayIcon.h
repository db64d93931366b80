// The status item as an icon in the desktop's tray.
#pragma once

#include "app/EmbeddedIcon.h"
#include "app/StatusNotifierHost.h"
#include "platform/StatusBar.h"
#include "platform/TrayArea.h"

#include <QIcon>
#include <QMenu>
#include <QPointer>
#include <QSystemTrayIcon>
#include <QTimer>
#include <memory>
#include <string>

namespace klova {

/// Appears once there is a tray, which may come later, change its kind, or never come.
class TrayIcon final : public StatusItem, public StatusButton {
public:
    /// `area` is where the icon goes while there is no status notifier host; borrowed.
    explicit TrayIcon(TrayArea& area);

    /// Shows `menu`, which is borrowed, on a click. Without one there is no icon.
    void setMenu(QMenu& menu);

    StatusButton* button() override { return this; }
    bool hasImage() const override { return !imageName_.empty(); }
    void setImage(std::string_view name) override;
    void setNeedsDisplay() override;

private:
    void redraw();
    void chooseKind();
    void announce();

    struct Image {
        explicit Image(const QString& name);
        QIcon drawn;  ///< at whatever size
        QIcon pixels; ///< the same without its name
    };
    const Image& image() const;

    TrayArea& area_;
    StatusNotifierHost host_;
    Image deactivated_;
    Image activated_;
    std::string imageName_;
    QPointer<QMenu> menu_;

    // At most one of the two is shown by the desktop. What is announced stays so: a host that
    // comes back finds it.
    std::unique_ptr<QSystemTrayIcon> announced_;
    std::unique_ptr<EmbeddedIcon> embedded_;
    QTimer redrawTimer_; ///< queues the redraw behind all that waits in the event loop
    QTimer kindTimer_;   ///< the same for a change of trays
};

} // namespace klova
