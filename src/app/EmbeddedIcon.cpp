#include "app/EmbeddedIcon.h"

#include <QBitmap>
#include <QCursor>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QScreen>
#include <algorithm>

namespace klova {
namespace {

/// Below the icon, or above where there is no room below: the icon stays in sight.
QPoint besideIcon(const QRect& icon, const QMenu& menu) {
    const int height = menu.sizeHint().height();
    const QScreen* screen = QGuiApplication::screenAt(icon.center());
    const bool fits = screen == nullptr || icon.bottom() + height <= screen->geometry().bottom();
    return {icon.left(), fits ? icon.bottom() + 1 : icon.top() - height};
}

} // namespace

EmbeddedIcon::EmbeddedIcon(TrayArea& area, const QIcon& icon, QMenu& menu)
    : QWidget(nullptr, Qt::FramelessWindowHint | Qt::BypassWindowManagerHint),
      blends_(area.blends()), icon_(icon), menu_(menu) {
    constexpr int side = 22;
    setWindowTitle("Klova");
    setAccessibleName("Klova");
    setToolTip("Klova");
    setAttribute(Qt::WA_AlwaysShowToolTips);
    setAttribute(Qt::WA_TranslucentBackground, blends_);
    setMinimumSize(side, side);
    resize(side, side);
    const WId window = winId();
    QCursor::pos(); // the server answers when it has made the window
    area.embed(window, [icon = QPointer(this)] {
        if (icon != nullptr)
            icon->show();
    });
}

void EmbeddedIcon::setIcon(const QIcon& icon) {
    icon_ = icon;
    cutOut();
    update();
}

/// The left and the right button, which do not get here while the gestures are armed: without the
/// keyboard, which is held then, a menu would not close again.
void EmbeddedIcon::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton && event->button() != Qt::RightButton)
        return;
    const QPointF corner = event->globalPosition() - event->position();
    menu_.popup(besideIcon({corner.toPoint(), size()}, menu_));
}

/// A tray of a fixed height may give an icon more width than that.
QRect EmbeddedIcon::square() const {
    const int side = std::min(width(), height());
    return {(width() - side) / 2, (height() - side) / 2, side, side};
}

void EmbeddedIcon::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(rect(), Qt::transparent);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    icon_.paint(&painter, square());
}

void EmbeddedIcon::resizeEvent(QResizeEvent*) { cutOut(); }

/// Where the panel is not seen behind the icon, what would be black around it is cut off, and what
/// would be nearly so.
void EmbeddedIcon::cutOut() {
    if (blends_)
        return;
    const double scale = devicePixelRatio();
    QImage shape(size() * scale, QImage::Format_ARGB32_Premultiplied);
    shape.setDevicePixelRatio(scale);
    shape.fill(Qt::transparent);
    QPainter painter(&shape);
    painter.setOpacity(0.55); // half is where a mask begins
    icon_.paint(&painter, square());
    painter.end();
    // Masks are made of whole points.
    shape = shape.scaled(size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    setMask(QBitmap::fromImage(shape.createAlphaMask()));
}

} // namespace klova
