#include "ui/Palette.h"

#include <QApplication>
#include <QFontInfo>
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

} // namespace klova::palette
