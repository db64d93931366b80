#include "ui/gestures/GesturePainter.h"

#include "ui/Palette.h"
#include "ui/gestures/DesktopPainter.h"
#include "ui/gestures/KeysPainter.h"

#include <QCoreApplication>
#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>

namespace klova {
namespace {

constexpr double kGap = 10;
constexpr double kKeys = 42; // the height of the row of keys

constexpr int kCaptionFlags = Qt::AlignCenter | Qt::TextWordWrap;

/// The captions' own font, or as much smaller as `text` needs to fit in.
QFont captionFont(const QString& text, const QSizeF& area) {
    double size = 12;
    QFont font = palette::font(size, QFont::DemiBold);
    const auto fits = [&] {
        const QRectF room(QPointF(), area);
        return room.contains(QFontMetricsF(font).boundingRect(room, kCaptionFlags, text));
    };
    while (size > 6 && !fits())
        font = palette::font(size -= 0.5, QFont::DemiBold);
    return font;
}

void paintCaption(QPainter& painter, const QRectF& area, const Picture& picture,
                  const Keycaps& keycaps) {
    QString text = QCoreApplication::translate("klova", picture.caption);
    if (text.contains("%1"))
        text = text.arg(keycaps.reopen);
    painter.setFont(captionFont(text, area.size()));
    painter.setPen(palette::kAccent);
    painter.drawText(area, kCaptionFlags, text);
}

/// A picture and what is pressed in it, side by side.
void paintStill(QPainter& painter, const QRectF& area, const Gesture& gesture, std::size_t beat,
                const Frame& origin, const Keycaps& keycaps) {
    const Picture picture = pictureAfter(gesture, beat);
    const bool moved = picture.window != origin || picture.shown == 0;
    const double width = std::min(area.height() * monitorAspect(), area.width() * 0.48);
    paintMonitor(painter, {area.left(), area.top(), width, area.height()}, picture,
                 moved ? std::optional(origin) : std::nullopt);
    const QRectF side = area.adjusted(width + kGap, 0, 0, 0);
    const double half = side.height() / 2;
    const double keys = std::min(kKeys, half);
    paintKeys(painter, {side.left(), side.center().y() - keys, side.width(), keys}, keycaps,
              gesture.beats[beat].pressed, picture);
    const double lines = QFontMetricsF(palette::font(12, QFont::DemiBold)).height() * 2.4;
    paintCaption(painter, {side.left(), side.center().y(), side.width(), std::min(half, lines)},
                 picture, keycaps);
}

} // namespace

void paintMoment(QPainter& painter, const QRectF& area, const Gesture& gesture,
                 const Picture& picture, const Keycaps& keycaps) {
    const double caption = QFontMetricsF(palette::font(12, QFont::DemiBold)).height() + 4;
    const double keys = std::min(kKeys, area.height() * 0.2);
    const QRectF monitor = area.adjusted(0, 0, 0, -caption - keys - 2 * kGap);
    paintMonitor(painter, monitor, picture);
    paintKeys(painter, {area.left(), monitor.bottom() + kGap, area.width(), keys}, keycaps,
              controlsOf(gesture), picture);
    paintCaption(painter, {area.left(), area.bottom() - caption, area.width(), caption}, picture,
                 keycaps);
}

void paintStills(QPainter& painter, const QRectF& area, const Gesture& gesture,
                 const Keycaps& keycaps) {
    const auto rows = static_cast<double>(gesture.stills.size());
    const double height = (area.height() - (rows - 1) * kGap) / rows;
    Frame origin = gesture.beats.front().window;
    double top = area.top();
    for (const std::size_t beat : gesture.stills) {
        paintStill(painter, {area.left(), top, area.width(), height}, gesture, beat, origin,
                   keycaps);
        origin = gesture.beats[beat].window;
        top += height + kGap;
    }
}

} // namespace klova
