#include "ui/PanelShadow.h"

#include <QPaintEvent>
#include <QPainterPath>
#include <QtMath>
#include <algorithm>
#include <cmath>
#include <numbers>

namespace klova {
namespace {

constexpr double kDrop = 6.0; // how far below the panel its shadow lies
constexpr double kBlur = 10.0;
constexpr double kReach = 26.0; // where the blur ends, on either side of the edge
constexpr int kSteps = 104;
constexpr double kStrength = 0.6;

QPainterPath rounded(const QRectF& frame, double radius) {
    QPainterPath path;
    path.addRoundedRect(frame, radius, radius);
    return path;
}

/// The opacity of a blurred edge at a distance from it, negative inside.
double opacityAt(double distance) {
    return kStrength / 2 * std::erfc(distance / (kBlur * std::numbers::sqrt2));
}

void paintShadow(QPainter& painter, const QRectF& frame) {
    painter.setPen(Qt::NoPen);
    const QRectF dropped = frame.translated(0, kDrop);
    double laid = 0;
    for (int step = 1; step < kSteps; ++step) {
        const double grow = kReach - 2 * kReach * step / kSteps;
        const double wanted = opacityAt(grow) - opacityAt(kReach);
        const double layer = (wanted - laid) / (1.0 - laid); // over what is there already
        painter.setBrush(QColor::fromRgbF(0, 0, 0, static_cast<float>(layer)));
        painter.drawPath(
            rounded(dropped.adjusted(-grow, -grow, grow, grow), std::max(2.0, kBlur + grow)));
        laid = wanted;
    }
}

} // namespace

QPixmap shadowOf(const QSize& panel, double pixelRatio) {
    QPixmap shadow(panel.grownBy(kShadowMargins) * pixelRatio);
    shadow.setDevicePixelRatio(pixelRatio);
    shadow.fill(Qt::transparent);
    QPainter painter(&shadow);
    painter.setRenderHint(QPainter::Antialiasing);
    paintShadow(painter, QRectF({double(kShadowMargins.left()), double(kShadowMargins.top())},
                                panel.toSizeF()));
    return shadow;
}

PanelEdge::PanelEdge(QWidget& content, double cornerRadius)
    : QWidget(&content), cornerRadius_(cornerRadius) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setGeometry(content.rect());
}

void PanelEdge::setShadow(const QPixmap& shadow) {
    shadow_ = shadow;
    update();
}

void PanelEdge::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(255, 255, 255, 34), 1)); // tells the panel from a dark desktop
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius_ - 0.5,
                            cornerRadius_ - 0.5);
    if (shadow_.isNull())
        return;
    const int side = qCeil(cornerRadius_);
    for (const QPoint& at : {QPoint(0, 0), QPoint(width() - side, 0), QPoint(0, height() - side),
                             QPoint(width() - side, height() - side)})
        if (const QRect corner(at, QSize(side, side)); event->region().intersects(corner))
            cutCorner(painter, corner);
}

void PanelEdge::cutCorner(QPainter& painter, const QRect& corner) const {
    QPainterPath outside;
    outside.addRect(corner);
    outside -= rounded(rect(), cornerRadius_);
    painter.save();
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    painter.fillPath(outside, Qt::black);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOver);
    painter.setClipPath(outside);
    painter.drawPixmap(-kShadowMargins.left(), -kShadowMargins.top(), shadow_);
    painter.restore();
}

} // namespace klova
