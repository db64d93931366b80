#include "ui/TourControls.h"

#include "ui/Palette.h"

#include <QPainter>

namespace klova {
namespace {

constexpr int kRing = 3; // room around the button for the focus ring
constexpr int kPadding = 18;
constexpr int kIconGap = 8;
constexpr int kDot = 6;
constexpr int kCurrentDot = 18;
constexpr int kDotGap = 6;

} // namespace

TourButton::TourButton(const QString& text) : QPushButton(text) {
    setFont(palette::font(13, QFont::DemiBold));
    setAutoDefault(true); // or Enter would do nothing outside of a dialog
    setCursor(Qt::PointingHandCursor);
}

/// The icon's side with the gap behind it; 0 without an icon.
int TourButton::iconWidth() const {
    return icon().isNull() ? 0 : fontMetrics().height() + kIconGap;
}

QSize TourButton::sizeHint() const {
    const QFontMetrics metrics = fontMetrics();
    return QSize(metrics.horizontalAdvance(text()) + iconWidth() + 2 * kPadding,
                 metrics.height() + 16)
        .grownBy({kRing, kRing, kRing, kRing});
}

void TourButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF pill = QRectF(rect()).adjusted(kRing, kRing, -kRing, -kRing);
    const double radius = pill.height() / 2;
    if (hasFocus()) {
        painter.setPen(QPen(palette::kAccent, 1.5));
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.75, 0.75, -0.75, -0.75), radius + kRing,
                                radius + kRing);
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(isDown()       ? palette::kAccent.darker(115)
                     : underMouse() ? palette::kAccent.lighter(108)
                                    : palette::kAccent);
    painter.drawRoundedRect(pill, radius, radius);
    painter.setPen(palette::kOnAccent);
    const QRectF inside = pill.adjusted(kPadding, 0, -kPadding, 0);
    painter.drawText(inside.adjusted(iconWidth(), 0, 0, 0), Qt::AlignCenter, text());
    const int side = fontMetrics().height();
    icon().paint(&painter,
                 QRectF(inside.left(), inside.center().y() - side / 2.0, side, side).toRect());
}

void PageDots::setPage(int page) {
    page_ = page;
    update();
}

QSize PageDots::sizeHint() const { return {kCurrentDot + (count_ - 1) * (kDot + kDotGap), kDot}; }

void PageDots::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    double x = 0;
    for (int page = 1; page <= count_; ++page) {
        const int width = page == page_ ? kCurrentDot : kDot;
        painter.setBrush(page == page_ ? palette::kAccent : palette::kEdge);
        painter.drawRoundedRect(QRectF(x, (height() - kDot) / 2.0, width, kDot), kDot / 2.0,
                                kDot / 2.0);
        x += width + kDotGap;
    }
}

} // namespace klova
