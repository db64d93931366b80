#include "ui/FocusRing.h"

#include "ui/Palette.h"

namespace klova {

bool showsFocusRing(const QWidget& widget) {
    return widget.hasFocus() && widget.window()->testAttribute(Qt::WA_KeyboardFocusChange);
}

void paintFocusRing(QPainter& painter, const QRectF& frame, double cornerRadius) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(palette::kBright, 2));
    painter.drawRoundedRect(frame.adjusted(1, 1, -1, -1), cornerRadius, cornerRadius);
}

} // namespace klova
