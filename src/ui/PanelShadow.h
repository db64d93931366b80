// The soft shadow around a panel and the panel's round corners.
#pragma once

#include <QMargins>
#include <QPainter>
#include <QPixmap>
#include <QWidget>

namespace klova {

/// Room for the shadow beside a panel, in points. Multiples of four stay whole pixels at each usual
/// scale.
inline constexpr QMargins kShadowMargins{28, 20, 28, 36};

/// The shadow of a panel of this size, with the room for it around the panel.
QPixmap shadowOf(const QSize& panel, double pixelRatio);

/// Lies over all that a panel shows, draws its edge and takes the square corners away, so that
/// whatever draws there need not know of them. Clicks go through.
class PanelEdge final : public QWidget {
public:
    PanelEdge(QWidget& content, double cornerRadius);

    /// What shows in the corners instead; none where the desktop cuts them out by itself.
    void setShadow(const QPixmap& shadow);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void cutCorner(QPainter& painter, const QRect& corner) const;

    double cornerRadius_;
    QPixmap shadow_; ///< of the whole panel
};

} // namespace klova
