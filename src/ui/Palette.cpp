#include "ui/Palette.h"

#include <QApplication>
#include <QFontInfo>
#include <QFontMetricsF>
#include <algorithm>

namespace klova::palette {

double fontScale() {
    constexpr double usual = 13.0; // pixels
    return std::clamp(QFontInfo(QApplication::font()).pixelSize() / usual, 1.0, 1.5);
}

QFont font(double size, QFont::Weight weight) {
    QFont result = QApplication::font();
    result.setPixelSize(qRound(size * fontScale()));
    result.setWeight(weight);
    return result;
}

QFont fitted(const QFont& font, const QString& text, double width) {
    QFont result = font;
    const double needed = QFontMetricsF(font).horizontalAdvance(text);
    if (needed > width)
        result.setPixelSize(std::max(1, static_cast<int>(font.pixelSize() * width / needed)));
    return result;
}

} // namespace klova::palette
