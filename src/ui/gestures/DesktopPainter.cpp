#include "ui/gestures/DesktopPainter.h"

#include "ui/Images.h"
#include "ui/Palette.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

namespace klova {
namespace {

// Lengths and places are in points of the drawn screen.
constexpr double kBezel = 36;
constexpr double kStand = 110;
constexpr double kBar = 108;
constexpr double kTitle = 62;
constexpr double kCorner = 20;
constexpr Frame kBehind{{130, 90}, {560, 400}};

const QRectF kScreen(0, 0, kDrawnScreen.size.width, kDrawnScreen.size.height);
const QRectF kCase = kScreen.adjusted(-kBezel, -kBezel, kBezel, kBezel);
const QRectF kMonitor = kCase.adjusted(0, 0, 0, kStand);
const QRectF kBarArea = kScreen.adjusted(0, kScreen.height() - kBar, 0, 0);
const QRectF kTask(150, kBarArea.top() + 26, 210, kBar - 52);
const QRectF kOtherTask = kTask.translated(kTask.width() + 24, 0);
const QRectF kIcon(kScreen.right() - 120, kBarArea.top() + 16, kBar - 32, kBar - 32);

struct WindowColours {
    QColor ground, title, line, mark;
};
const WindowColours kFront{"#f6f7f9", "#dfe3ea", "#c3c9d4", "#5ab0ff"};
const WindowColours kBack{"#3d4a68", "#344060", "#52607f", "#6478a4"};

QRectF rectOf(const Frame& frame) {
    return {frame.origin.x, frame.origin.y, frame.size.width, frame.size.height};
}

QRectF mix(const QRectF& from, const QRectF& to, double share) {
    const auto between = [share](double a, double b) { return std::lerp(a, b, share); };
    return {QPointF(between(from.left(), to.left()), between(from.top(), to.top())),
            QPointF(between(from.right(), to.right()), between(from.bottom(), to.bottom()))};
}

QColor faded(QColor colour, double opacity) {
    colour.setAlphaF(static_cast<float>(opacity));
    return colour;
}

/// How far the icon and the window show that the gestures are armed.
double armed(const Picture& picture) { return std::clamp((picture.held - 0.9) * 10, 0.0, 1.0); }

void fill(QPainter& painter, const QRectF& area, double radius, const QBrush& brush) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(brush);
    painter.drawRoundedRect(area, radius, radius);
}

void paintCase(QPainter& painter) {
    const QPointF foot(kCase.center().x(), kMonitor.bottom());
    QLinearGradient metal(0, kCase.bottom(), 0, foot.y());
    metal.setColorAt(0, "#2a2d33");
    metal.setColorAt(1, "#4a4e57");
    painter.setPen(Qt::NoPen);
    painter.setBrush(metal);
    painter.drawPolygon(QPolygonF({{foot.x() - 90, kCase.bottom()},
                                   {foot.x() + 90, kCase.bottom()},
                                   {foot.x() + 110, foot.y() - 16},
                                   {foot.x() - 110, foot.y() - 16}}));
    fill(painter, {foot.x() - 210, foot.y() - 22, 420, 22}, 11, QColor("#565b66"));
    fill(painter, kCase, 46, QColor("#565b66"));
    fill(painter, kCase.adjusted(6, 6, -6, -6), 40, QColor("#08090b"));
}

/// A wave from the left to the right edge of the screen, filled down to its bottom.
QPainterPath hill(double left, double crest, double right) {
    QPainterPath path(QPointF(0, left));
    path.cubicTo(kScreen.width() * 0.35, crest, kScreen.width() * 0.65, right + (left - crest),
                 kScreen.width(), right);
    path.lineTo(kScreen.bottomRight());
    path.lineTo(kScreen.bottomLeft());
    path.closeSubpath();
    return path;
}

void paintWallpaper(QPainter& painter) {
    QLinearGradient sky(0, 0, kScreen.width() * 0.4, kScreen.height());
    sky.setColorAt(0, "#141c3a");
    sky.setColorAt(0.6, "#2b3f7c");
    sky.setColorAt(1, "#4b6fb5");
    painter.fillRect(kScreen, sky);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor("#27498d"));
    painter.drawPath(hill(560, 300, 520));
    painter.setBrush(QColor("#1c3874"));
    painter.drawPath(hill(760, 820, 560));
    painter.setBrush(QColor("#152a5c"));
    painter.drawPath(hill(700, 960, 800));
}

/// Lines of text as high as the window has room for.
void paintText(QPainter& painter, const QRectF& area, const WindowColours& colours) {
    constexpr double shares[] = {0.95, 0.8, 0.9, 0.55};
    std::size_t line = 0;
    for (double y = area.top(); y + 18 <= area.bottom(); y += 46)
        fill(painter, {area.left(), y, area.width() * shares[line++ % 4], 18}, 9, colours.line);
}

void paintContent(QPainter& painter, const QRectF& area, const WindowColours& colours) {
    const QRectF side(area.left() + 34, area.top() + 34, 130, area.height() - 68);
    const QRectF main(side.right() + 44, side.top(), area.right() - 34 - side.right() - 44,
                      side.height());
    const double picture = std::min(main.height() * 0.45, 240.0);
    fill(painter, {main.left(), main.top(), main.width(), picture}, 14, colours.mark);
    paintText(painter, side, colours);
    paintText(painter, main.adjusted(0, picture + 30, 0, 0), colours);
}

void paintWindow(QPainter& painter, const QRectF& frame, const WindowColours& colours) {
    fill(painter, frame.adjusted(-8, -2, 8, 18), kCorner + 8, QColor(0, 0, 0, 60));
    fill(painter, frame, kCorner, colours.title);
    QPainterPath ground;
    ground.addRoundedRect(frame, kCorner, kCorner);
    painter.save();
    painter.setClipPath(ground, Qt::IntersectClip);
    const QRectF content = frame.adjusted(0, kTitle, 0, 0);
    painter.fillRect(content, colours.ground);
    paintContent(painter, content, colours);
    painter.restore();
    fill(painter, {frame.right() - 46, frame.top() + 20, 22, 22}, 11, colours.line);
    fill(painter, {frame.right() - 84, frame.top() + 20, 22, 22}, 11, colours.line);
}

void paintFocusedWindow(QPainter& painter, const Picture& picture) {
    const QRectF frame = mix(kTask, rectOf(picture.window), picture.shown);
    painter.save();
    painter.setOpacity(picture.curtain * std::min(picture.shown * 1.6, 1.0));
    paintWindow(painter, frame, kFront);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(faded(palette::kAccent, armed(picture)), 14));
    painter.drawRoundedRect(frame.adjusted(3, 3, -3, -3), kCorner, kCorner);
    painter.restore();
}

void paintTrace(QPainter& painter, const Frame& trace) {
    painter.setPen(QPen(faded(palette::kBright, 0.75), 10, Qt::DashLine, Qt::RoundCap));
    painter.setBrush(faded(palette::kBright, 0.08));
    painter.drawRoundedRect(rectOf(trace).adjusted(8, 8, -8, -8), kCorner, kCorner);
}

void paintBar(QPainter& painter, const Picture& picture) {
    painter.fillRect(kBarArea, QColor(9, 12, 22, 225));
    for (const QPointF& dot : {QPointF(0, 0), QPointF(26, 0), QPointF(0, 26), QPointF(26, 26)})
        fill(painter, QRectF(QPointF(48, kBarArea.top() + 32) + dot, QSizeF(18, 18)), 5,
             palette::kText);
    fill(painter, kTask, 12, faded(palette::kBright, 0.10 + 0.22 * picture.shown));
    fill(painter, kOtherTask, 12, faded(palette::kBright, 0.10));
    fill(painter, kIcon.adjusted(-12, -12, 12, 12), 26,
         faded(palette::kAccent, 0.45 * armed(picture)));
    const bool on = armed(picture) > 0.5;
    imageNamed(on ? "Menulet_activated" : "Menulet_deactivated").paint(&painter, kIcon.toRect());
}

void paintPointer(QPainter& painter, const Picture& picture) {
    const QPointF tip(picture.pointer.x, picture.pointer.y);
    const double light = std::max(picture.light(kLeftButton), picture.light(kRightButton));
    painter.setPen(QPen(faded(palette::kAccent, light), 10));
    painter.setBrush(faded(palette::kAccent, 0.35 * light));
    painter.drawEllipse(tip, 30 + 34 * light, 30 + 34 * light);
    painter.setPen(QPen(QColor("#0b0d12"), 9, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::white);
    painter.drawPolygon(
        QPolygonF({{0, 0}, {0, 92}, {21, 73}, {36, 106}, {53, 98}, {38, 66}, {66, 64}})
            .translated(tip));
}

} // namespace

double monitorAspect() { return kMonitor.width() / kMonitor.height(); }

void paintMonitor(QPainter& painter, const QRectF& area, const Picture& picture,
                  const std::optional<Frame>& trace) {
    const double scale =
        std::min(area.width() / kMonitor.width(), area.height() / kMonitor.height());
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(area.center());
    painter.scale(scale, scale);
    painter.translate(-kMonitor.center());
    paintCase(painter);
    painter.setClipRect(kScreen, Qt::IntersectClip);
    paintWallpaper(painter);
    paintWindow(painter, rectOf(kBehind), kBack);
    if (trace)
        paintTrace(painter, *trace);
    paintFocusedWindow(painter, picture);
    paintBar(painter, picture);
    paintPointer(painter, picture);
    painter.restore();
}

} // namespace klova
