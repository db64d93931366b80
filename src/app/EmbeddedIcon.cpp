#include "app/EmbeddedIcon.h"

#include <QBitmap>
#include <QCursor>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>

namespace klova {

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
    if (event->button() == Qt::LeftButton || event->button() == Qt::RightButton)
        menu_.popup(event->globalPosition().toPoint());
}

void EmbeddedIcon::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(rect(), Qt::transparent);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    icon_.paint(&painter, rect());
}

void EmbeddedIcon::resizeEvent(QResizeEvent*) { cutOut(); }

/// Where the panel is not seen behind the icon, what would be black around it is cut off, and what
/// would be nearly so.
void EmbeddedIcon::cutOut() {
    if (blends_)
        return;
    QImage shape(size(), QImage::Format_ARGB32_Premultiplied);
    shape.fill(Qt::transparent);
    QPainter painter(&shape);
    painter.setOpacity(0.55); // half is where a mask begins
    icon_.paint(&painter, rect());
    painter.end();
    setMask(QBitmap::fromImage(shape.createAlphaMask()));
}

} // namespace klova
