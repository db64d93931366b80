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

/// Lies over all that a panel shows, draws its edge and takes the square corners away, so that
/// whatever draws there need not know of them. Clicks go through.
class PanelEdge final : public QWidget {
public:
    PanelEdge(QWidget& content, double cornerRadius);

    /// Whether the corners are to be taken away: only where what is translucent shows as such.
    void setCutting(bool cutting);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void cutCorners(QPainter& painter) const;

    double cornerRadius_;
    bool cutting_ = true;
};

} // namespace klova
