#include "ui/PanelShadow.h"

#include <QPainterPath>
#include <cmath>

namespace klova {
namespace {

constexpr double kDrop = 8.0;   // how far below the panel its shadow lies
constexpr double kReach = 27.0; // where it has faded out
constexpr int kSteps = 54;
constexpr double kStrength = 0.5;

QPainterPath rounded(const QRectF& frame, double radius) {
    QPainterPath path;
    path.addRoundedRect(frame, radius, radius);
    return path;
}

/// The opacity at a distance from the panel, 0 at the panel's edge and 1 at the reach.
double fallOff(double distance) { return kStrength * std::pow(1.0 - distance, 2.6); }

} // namespace

void paintShadow(QPainter& painter, const QRectF& frame, double cornerRadius) {
    painter.setPen(Qt::NoPen);
    const QRectF dropped = frame.translated(0, kDrop);
    double laid = 0;
    for (int step = kSteps; step > 0; --step) {
        const double grow = kReach * step / kSteps;
        const double wanted = fallOff((step - 1.0) / kSteps);
        const double layer = (wanted - laid) / (1.0 - laid); // over what is there already
        painter.setBrush(QColor::fromRgbF(0, 0, 0, static_cast<float>(layer)));
        painter.drawPath(rounded(dropped.adjusted(-grow, -grow, grow, grow), cornerRadius + grow));
        laid = wanted;
    }
}

CornerCutter::CornerCutter(QWidget& content, double cornerRadius)
    : QWidget(&content), cornerRadius_(cornerRadius) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setGeometry(content.rect());
}

void CornerCutter::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath corners;
    corners.addRect(rect());
    corners -= rounded(rect(), cornerRadius_);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    painter.fillPath(corners, Qt::black);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOver);
    painter.setClipPath(corners);
    paintShadow(painter, rect(), cornerRadius_);
}

} // namespace klova
