#include "ui/KeyButton.h"

#include "ui/FocusRing.h"
#include "ui/Palette.h"
#include "ui/RadioAccessible.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <QSignalBlocker>

namespace klova {
namespace {

constexpr double kDepth = 3; // how far a key stands out
constexpr double kRadius = 7;
constexpr double kSide = 4;      // free beside the texts
constexpr double kMarkSide = 15; // free beside the title, which has the mark next to it
constexpr double kRing = 3;      // room for the focus ring

QFont titleFont(const KeyLook& look) { return palette::font(look.titleSize, QFont::DemiBold); }
QFont captionFont() { return palette::font(10); }

void paintCap(QPainter& painter, const QRectF& face, double depth, bool on) {
    painter.setPen(Qt::NoPen);
    if (depth > 0) {
        painter.setBrush(on ? palette::kAccentShade : palette::kEdge);
        painter.drawRoundedRect(face.adjusted(0, 0, 0, depth), kRadius, kRadius);
    }
    painter.setBrush(on ? palette::kAccent : palette::kWell);
    painter.setPen(QPen(on ? palette::kAccent : palette::kEdge, 1));
    painter.drawRoundedRect(face.adjusted(0.5, 0.5, -0.5, -0.5), kRadius - 0.5, kRadius - 0.5);
}

/// What says "on" beside the colour: a check mark, or a dot where only one is chosen.
void paintMark(QPainter& painter, const QRectF& face, bool radio) {
    const QPointF at = face.topRight() + QPointF(-9, 9);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette::kOnAccent);
    if (radio) {
        painter.drawEllipse(at, 2.8, 2.8);
        return;
    }
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(palette::kOnAccent, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(
        QPolygonF{at + QPointF(-3, 0.3), at + QPointF(-0.9, 2.4), at + QPointF(3.2, -2.6)});
}

void paintTexts(QPainter& painter, const QRectF& face, const QAbstractButton& button,
                const KeyLook& look) {
    painter.setPen(button.isChecked() ? palette::kOnAccent
                                      : button.palette().color(QPalette::ButtonText));
    painter.setFont(palette::fitted(titleFont(look), button.text(), face.width() - 2 * kMarkSide));
    const double title = QFontMetricsF(painter.font()).height();
    const double caption = look.caption.isEmpty() ? 0 : QFontMetricsF(captionFont()).height();
    QRectF line(face.left(), face.center().y() - (title + caption) / 2, face.width(), title);
    painter.drawText(line, Qt::AlignCenter, button.text());
    if (look.caption.isEmpty())
        return;
    painter.setFont(palette::fitted(captionFont(), look.caption, face.width() - 2 * kSide));
    line = QRectF(line.left(), line.bottom(), line.width(), caption);
    painter.drawText(line, Qt::AlignCenter, look.caption);
}

QAccessibleInterface* accessibleRadio(const QString& /*className*/, QObject* object) {
    auto* radio = dynamic_cast<KeyRadioButton*>(object);
    return radio != nullptr ? new RadioAccessible(*radio) : nullptr; // Qt's to delete
}

} // namespace

QSize sizeOfKey(const KeyLook& look) {
    return smallestSizeOfKey(look).expandedTo({0, qRound(look.height)});
}

QSize smallestSizeOfKey(const KeyLook& look) {
    const QFontMetricsF title(titleFont(look));
    const QFontMetricsF caption(captionFont());
    const bool captioned = !look.caption.isEmpty();
    const double height = title.height() + (captioned ? caption.height() : 0);
    return QSizeF(2 * kMarkSide + 2 * kRing, height + 4 + kDepth + 2 * kRing).toSize();
}

void paintKey(QAbstractButton& button, const KeyLook& look, bool radio) {
    QPainter painter(&button);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area = QRectF(button.rect()).adjusted(kRing, kRing, -kRing, -kRing);
    const bool on = button.isChecked();
    const double depth = !look.raised || button.isDown() ? 0 : kDepth;
    const QRectF face = area.adjusted(0, look.raised ? kDepth - depth : 0, 0, -depth);
    paintCap(painter, face, depth, on);
    if (on)
        paintMark(painter, face, radio);
    paintTexts(painter, face, button, look);
    if (showsFocusRing(button))
        paintFocusRing(painter, button.rect(), kRadius + 2);
}

void announceRadioButtons() {
    QAccessible::installFactory(accessibleRadio); // only the first time counts
}

void setNextState(QAbstractButton& button) {
    const QSignalBlocker quiet(button);
    button.setChecked(!button.isChecked());
}

} // namespace klova
