#include "ui/WindowButton.h"

#include "ui/FocusRing.h"

#include <QCoreApplication>
#include <QPainter>

namespace klova {
namespace {

constexpr QRect kMark(11, 11, 16, 16);
constexpr int kRing = 4; // room for the focus ring

} // namespace

WindowButton::WindowButton(const QRect& frame, const QColor& color) : color_(color) {
    setGeometry(frame);
    setMask(QRegion(kMark.adjusted(-kRing, -kRing, kRing, kRing), QRegion::Ellipse));
    setAccessibleName(QCoreApplication::translate("WindowButton", "Close"));
    setShortcut(Qt::Key_Escape);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
}

void WindowButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF mark(kMark);
    const bool lit = underMouse() || isDown() || showsFocusRing(*this);
    painter.setPen(QPen(color_, 1.5));
    painter.setBrush(lit ? color_ : QColor(Qt::transparent));
    painter.drawEllipse(mark.adjusted(0.75, 0.75, -0.75, -0.75));
    painter.setPen(QPen(lit ? palette::kGround : color_, 1.5, Qt::SolidLine, Qt::RoundCap));
    const QRectF cross = mark.adjusted(5, 5, -5, -5);
    painter.drawLine(cross.topLeft(), cross.bottomRight());
    painter.drawLine(cross.bottomLeft(), cross.topRight());
    if (showsFocusRing(*this))
        paintFocusRing(painter, mark.adjusted(-4, -4, 4, 4), mark.width());
}

} // namespace klova
