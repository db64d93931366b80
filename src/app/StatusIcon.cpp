#include "app/StatusIcon.h"

#include <QColor>
#include <QPainter>
#include <QPixmap>

namespace klova {
namespace {

struct Palette {
    QColor rim, ground, pane, litPane;
};

const Palette kDeactivated{"#c9ced6", "#2b3038", "#7d8591", "#ffffff"};
const Palette kActivated{"#ffffff", "#0b57d0", "#7fb2ff", "#ffe14d"};

/// All edges lie on whole pixels, or the panes would blur at the sizes of a panel.
QPixmap draw(int size, const Palette& palette) {
    const int unit = size / 16;
    const int gap = 2 * unit;
    const int pane = (size - 4 * unit - gap) / 2;
    const int first = (size - 2 * pane - gap) / 2;
    const int second = first + pane + gap;

    QPixmap picture(size, size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const auto box = [&painter](const QRect& area, int radius, const QColor& colour) {
        painter.setBrush(colour);
        painter.drawRoundedRect(area, radius, radius);
    };
    const QRect whole(0, 0, size, size);
    box(whole, 3 * unit, palette.rim);
    box(whole.adjusted(unit, unit, -unit, -unit), 2 * unit, palette.ground);
    box(QRect(first, first, pane, pane), 0, palette.litPane);
    box(QRect(second, first, pane, pane), 0, palette.pane);
    box(QRect(first, second, pane, pane), 0, palette.pane);
    box(QRect(second, second, pane, pane), 0, palette.pane);
    return picture;
}

} // namespace

QIcon statusIcon(bool activated) {
    QIcon icon;
    for (const int size : {16, 22, 24, 32, 48, 64})
        icon.addPixmap(draw(size, activated ? kActivated : kDeactivated));
    return icon;
}

} // namespace klova
