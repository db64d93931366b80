// The soft shadow around a panel and the panel's round corners.
#pragma once

#include <QMargins>
#include <QPainter>
#include <QWidget>

namespace klova {

/// Room for the shadow beside a panel, in points. Multiples of four stay whole pixels at each usual
/// scale.
inline constexpr QMargins kShadowMargins{28, 20, 28, 36};

/// Draws the shadow of a panel that takes up `frame`.
void paintShadow(QPainter& painter, const QRectF& frame);

/// Lies over all that a panel shows and takes the square corners away, so that whatever draws there
/// need not know of them. Clicks go through.
class CornerCutter final : public QWidget {
public:
    CornerCutter(QWidget& content, double cornerRadius);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    double cornerRadius_;
};

} // namespace klova
