#include "app/TrayIcon.h"

#include "ui/Images.h"
#include "ui/ScaleWatch.h"

#include <QCursor>

namespace klova {

TrayIcon::Image::Image(const QString& name) : drawn(imageNamed(name)) {
    for (const QSize& size : drawn.availableSizes())
        pixels.addPixmap(drawn.pixmap(size, 1.0));
}

TrayIcon::TrayIcon(TrayArea& area)
    : area_(area), deactivated_("Menulet_deactivated"), activated_("Menulet_activated") {
    for (QTimer* timer : {&redrawTimer_, &kindTimer_})
        timer->setSingleShot(true);
    QObject::connect(&redrawTimer_, &QTimer::timeout, &redrawTimer_, [this] { redraw(); });
    QObject::connect(&kindTimer_, &QTimer::timeout, &kindTimer_, [this] { chooseKind(); });
    const auto changed = [this] {
        embedded_.reset();
        kindTimer_.start();
    };
    host_.setChanged(changed);
    area_.setChanged(changed);
    // An embedded icon keeps its pixels when the scale changes, and would no longer fit into them.
    watchScale(kindTimer_, changed);
}

void TrayIcon::setMenu(QMenu& menu) {
    menu_ = &menu;
    kindTimer_.start();
}

void TrayIcon::setImage(std::string_view name) {
    imageName_ = name;
    setNeedsDisplay();
}

void TrayIcon::setNeedsDisplay() { redrawTimer_.start(); }

const TrayIcon::Image& TrayIcon::image() const {
    return imageName_ == "Menulet_activated" ? activated_ : deactivated_;
}

void TrayIcon::redraw() {
    if (announced_ != nullptr)
        announced_->setIcon(image().pixels);
    if (embedded_ != nullptr)
        embedded_->setIcon(image().drawn);
}

void TrayIcon::chooseKind() {
    if (menu_ == nullptr || !host_.present())
        return;
    if (*host_.present())
        announce();
    else if (area_.present() && embedded_ == nullptr)
        embedded_ = std::make_unique<EmbeddedIcon>(area_, image().drawn, *menu_);
}

/// Qt decides once in a process between announcing and embedding, by whether there is a host when
/// the first icon is made. So none may be made before. An icon's name would be announced with it,
/// and many a host that finds none of that name in the desktop's theme shows no icon at all.
void TrayIcon::announce() {
    if (announced_ != nullptr)
        return;
    announced_ = std::make_unique<QSystemTrayIcon>(image().pixels);
    announced_->setToolTip("Klova");
    announced_->setContextMenu(menu_);
    QObject::connect(announced_.get(), &QSystemTrayIcon::activated, menu_,
                     [this](QSystemTrayIcon::ActivationReason reason) {
                         if (reason == QSystemTrayIcon::Trigger)
                             menu_->popup(QCursor::pos());
                     });
    announced_->show();
}

} // namespace klova
