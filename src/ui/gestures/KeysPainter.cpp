#include "ui/gestures/KeysPainter.h"

#include "ui/Palette.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <functional>
#include <vector>

namespace klova {
namespace {

// Lengths are shares of the row's height.
constexpr double kGap = 0.18;
constexpr double kMouseWidth = 0.7;
constexpr double kArrowWidth = 0.62;

/// Something that stands in the row.
struct Piece {
    double width = 0;
    std::function<void(QPainter&, const QRectF&)> paint;
};

QColor between(const QColor& dark, const QColor& lit, double light) {
    const auto mix = [light](int from, int to) { return from + qRound((to - from) * light); };
    return {mix(dark.red(), lit.red()), mix(dark.green(), lit.green()),
            mix(dark.blue(), lit.blue())};
}

QColor glow(double light) {
    QColor colour = palette::kAccent;
    colour.setAlphaF(static_cast<float>(0.28 * light));
    return colour;
}

/// A key's own area, which goes down a little as it is lit.
QRectF paintKey(QPainter& painter, const QRectF& area, double light) {
    const double unit = std::min(area.height(), area.width()) / 20;
    const double radius = 4 * unit;
    painter.setPen(Qt::NoPen);
    painter.setBrush(glow(light));
    painter.drawRoundedRect(area.adjusted(-1.4 * unit, -1.4 * unit, 1.4 * unit, 1.4 * unit),
                            radius * 1.3, radius * 1.3);
    const QRectF top = area.adjusted(0, 0, 0, -1.6 * unit).translated(0, 1.2 * unit * light);
    painter.setBrush(between(palette::kEdge.darker(190), palette::kAccentShade, light));
    painter.drawRoundedRect(area, radius, radius);
    painter.setPen(QPen(between(palette::kEdge, palette::kAccent, light), unit * 0.8));
    painter.setBrush(between(palette::kWell, palette::kAccent, light));
    painter.drawRoundedRect(top, radius, radius);
    return top;
}

void setText(QPainter& painter, double pixels, double light, QFont::Weight weight) {
    QFont font = palette::font(10, weight);
    font.setPixelSize(std::max(1, qRound(pixels)));
    painter.setFont(font);
    painter.setPen(between(palette::kText, palette::kOnAccent, light));
}

void paintLetters(QPainter& painter, const QRectF& area, const Keycap& keycap, double light) {
    const QRectF top = paintKey(painter, area, light);
    const double height = top.height();
    setText(painter, height * 0.4, light, QFont::DemiBold);
    if (keycap.name.isEmpty()) {
        painter.drawText(top, Qt::AlignCenter, keycap.symbol);
        return;
    }
    painter.drawText(top.adjusted(0, height * 0.06, 0, -height * 0.38), Qt::AlignCenter,
                     keycap.symbol);
    setText(painter, height * 0.27, light, QFont::Normal);
    painter.drawText(top.adjusted(0, height * 0.56, 0, -height * 0.08), Qt::AlignCenter,
                     keycap.name);
}

void paintArrow(QPainter& painter, const QRectF& area, double turn, double light) {
    const QRectF top = paintKey(painter, area, light);
    const double size = top.height() * 0.26;
    painter.save();
    painter.translate(top.center());
    painter.rotate(turn);
    painter.setPen(QPen(between(palette::kText, palette::kOnAccent, light), size * 0.4,
                        Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawLine(QPointF(-size, 0), QPointF(size, 0));
    painter.drawPolyline(
        QPolygonF({{-size * 0.2, -size * 0.8}, {-size, 0}, {-size * 0.2, size * 0.8}}));
    painter.restore();
}

void paintArrows(QPainter& painter, const QRectF& area, const Picture& picture) {
    const double gap = area.height() * 0.05;
    const QSizeF size((area.width() - 2 * gap) / 3, (area.height() - gap) / 2);
    const auto place = [&](int column, int row) {
        return QRectF(area.topLeft() +
                          QPointF(column * (size.width() + gap), row * (size.height() + gap)),
                      size);
    };
    paintArrow(painter, place(0, 1), 0, picture.light(kLeftArrow));
    paintArrow(painter, place(1, 0), 90, picture.light(kUpArrow));
    paintArrow(painter, place(2, 1), 180, picture.light(kRightArrow));
    paintArrow(painter, place(1, 1), 270, picture.light(kDownArrow));
}

void paintMouseLines(QPainter& painter, const QRectF& area, double buttons) {
    const double unit = area.height() / 40;
    const double middle = area.center().x();
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(palette::kEdge, unit * 1.6));
    painter.drawRoundedRect(area, area.width() / 2, area.width() / 2);
    painter.drawLine(QPointF(area.left(), buttons), QPointF(area.right(), buttons));
    painter.drawLine(QPointF(middle, area.top()), QPointF(middle, buttons));
    const QRectF wheel(middle - 2.5 * unit, area.top() + 6 * unit, 5 * unit, 9 * unit);
    painter.setBrush(palette::kText);
    painter.setPen(QPen(palette::kGround, unit));
    painter.drawRoundedRect(wheel, wheel.width() / 2, wheel.width() / 2);
}

void paintMouse(QPainter& painter, const QRectF& area, const Picture& picture) {
    const QSizeF button(area.width() / 2, area.height() * 0.45);
    const auto paintButton = [&](double left, Control control) {
        painter.fillRect(QRectF(QPointF(left, area.top()), button),
                         between(palette::kWell, palette::kAccent, picture.light(control)));
    };
    QPainterPath body;
    body.addRoundedRect(area, button.width(), button.width());
    painter.save();
    painter.setClipPath(body, Qt::IntersectClip);
    painter.fillRect(area, palette::kWell);
    paintButton(area.left(), kLeftButton);
    paintButton(area.center().x(), kRightButton);
    painter.restore();
    paintMouseLines(painter, area, area.top() + button.height());
}

Piece letters(const Keycap& keycap, double light) {
    const double count = static_cast<double>(std::max(keycap.symbol.size(), keycap.name.size()));
    return {std::max(1.0, 0.5 + 0.2 * count),
            [keycap, light](QPainter& painter, const QRectF& area) {
                paintLetters(painter, area, keycap, light);
            }};
}

Piece sign(const QString& text) {
    return {0.3, [text](QPainter& painter, const QRectF& area) {
                setText(painter, area.height() * 0.4, 0, QFont::Normal);
                painter.drawText(area.adjusted(-area.height(), 0, area.height(), 0),
                                 Qt::AlignCenter, text);
            }};
}

Piece arrows(const Picture& picture) {
    return {3 * kArrowWidth, [picture](QPainter& painter, const QRectF& area) {
                paintArrows(painter, area, picture);
            }};
}

Piece mouse(const Picture& picture) {
    return {kMouseWidth, [picture](QPainter& painter, const QRectF& area) {
                paintMouse(painter, area, picture);
            }};
}

std::vector<Piece> rowOf(const Keycaps& keycaps, unsigned controls, const Picture& picture) {
    std::vector<Piece> row;
    const double down = picture.held * static_cast<double>(keycaps.activation.size());
    for (const Keycap& keycap : keycaps.activation)
        row.push_back(
            letters(keycap, std::clamp(down - static_cast<double>(row.size()), 0.0, 1.0)));
    if (!row.empty() && controls != kNothing)
        row.push_back(sign(QStringLiteral("+")));
    if ((controls & kArrows) != 0)
        row.push_back(arrows(picture));
    if ((controls & (kLeftButton | kRightButton)) != 0)
        row.push_back(mouse(picture));
    if ((controls & kReopenKey) != 0 && (controls & ~kReopenKey) != 0)
        row.push_back(sign(QStringLiteral("/")));
    if ((controls & kReopenKey) != 0)
        row.push_back(letters({keycaps.reopen, {}}, picture.light(kReopenKey)));
    return row;
}

} // namespace

void paintKeys(QPainter& painter, const QRectF& area, const Keycaps& keycaps, unsigned controls,
               const Picture& picture) {
    const std::vector<Piece> row = rowOf(keycaps, controls, picture);
    double width = kGap; // half of it at either end, for the light around a key
    for (const Piece& piece : row)
        width += piece.width + kGap;
    const double height = std::min(area.height(), area.width() / std::max(width, 1.0));
    QPointF corner = area.center() - QPointF(width - 2 * kGap, 1) * (height / 2);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    for (const Piece& piece : row) {
        piece.paint(painter, QRectF(corner, QSizeF(piece.width, 1) * height));
        corner.rx() += (piece.width + kGap) * height;
    }
    painter.restore();
}

} // namespace klova
