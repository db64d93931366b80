#include "ui/WindowButton.h"

#include <QCoreApplication>
#include <QPainter>

namespace klova {
namespace {

constexpr QRect kMark(12, 12, 16, 16);
constexpr int kRing = 4; // room for the focus ring

} // namespace

WindowButton::WindowButton(const QRect& frame, const QColor& color) : color_(color) {
    setGeometry(frame);
    setMask(QRegion(kMark.adjusted(-kRing, -kRing, kRing, kRing), QRegion::Ellipse));
    setAccessibleName(QCoreApplication::translate("WindowButton", "Close"));
    setShortcut(Qt::Key_Escape);
    setFocusPolicy(Qt::StrongFocus);
}

void WindowButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color_, 1.5));
    painter.drawEllipse(kMark);
}

} // namespace klova
