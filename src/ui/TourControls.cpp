#include "ui/TourControls.h"

#include "ui/FocusRing.h"
#include "ui/Palette.h"

#include <QPainter>

namespace klova {
namespace {

constexpr int kRing = 4; // room around the button for the focus ring
constexpr int kPadding = 18;
constexpr int kIconInset = 5;
constexpr int kIconGap = 8;
constexpr int kDot = 6;
constexpr int kCurrentDot = 18;
constexpr int kDotGap = 6;

} // namespace

TourButton::TourButton(const QString& text) : QPushButton(text) {
    setFont(palette::font(13, QFont::DemiBold));
    setAttribute(Qt::WA_Hover);
    setCursor(Qt::PointingHandCursor);
}

int TourButton::iconSide() const { return fontMetrics().height() + 6; }

/// What lies left of the text.
int TourButton::leading() const {
    return icon().isNull() ? kPadding : kIconInset + iconSide() + kIconGap;
}

QSize TourButton::sizeHint() const {
    const QFontMetrics metrics = fontMetrics();
    return QSize(leading() + metrics.horizontalAdvance(text()) + kPadding,
                 iconSide() + 2 * kIconInset)
        .grownBy({kRing, kRing, kRing, kRing});
}

void TourButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRect pill = rect().adjusted(kRing, kRing, -kRing, -kRing);
    const double radius = pill.height() / 2.0;
    if (showsFocusRing(*this))
        paintFocusRing(painter, rect(), radius + kRing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(isDown()       ? palette::kAccent.darker(115)
                     : underMouse() ? palette::kAccent.lighter(108)
                                    : palette::kAccent);
    painter.drawRoundedRect(pill, radius, radius);
    painter.setPen(palette::kOnAccent);
    painter.drawText(pill.adjusted(leading(), 0, -kPadding, 0), Qt::AlignCenter, text());
    icon().paint(&painter,
                 {pill.topLeft() + QPoint(kIconInset, kIconInset), QSize(iconSide(), iconSide())});
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
