#include "ui/LaunchButton.h"

#include "ui/FocusRing.h"
#include "ui/Palette.h"

#include <QFontMetrics>
#include <QPainter>

namespace klova {
namespace {

constexpr int kSwitch = 44;       // side of the square picture
constexpr int kSwitchHeight = 26; // of what is drawn in it
constexpr int kAbove = (kSwitch - kSwitchHeight) / 2;
constexpr int kInset = 3; // room for the focus ring
constexpr QMargins kRing(kInset, kInset, kInset, kInset);

} // namespace

LaunchButton::LaunchButton(const QString& text) : QCheckBox(text) {
    setFont(palette::font(13));
    setFocusPolicy(Qt::StrongFocus);
}

QSize LaunchButton::sizeHint() const {
    const QFontMetrics metrics(font());
    return {2 * kSwitch, std::max(metrics.height(), kSwitchHeight) + 2 * kInset};
}

void LaunchButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(palette::kText);
    const QRect line = rect().adjusted(kInset, 0, -kInset, 0);
    painter.setFont(palette::fitted(font(), text(), line.width() - kSwitch - kInset));
    painter.drawText(line, Qt::AlignVCenter | Qt::AlignLeading, text());
    const QRect picture(line.right() + 1 - kSwitch, line.center().y() - kSwitch / 2, kSwitch,
                        kSwitch);
    icon().paint(&painter, picture);
    if (showsFocusRing(*this))
        paintFocusRing(painter, picture.marginsRemoved({0, kAbove, 0, kAbove}) + kRing, 16);
}

} // namespace klova
