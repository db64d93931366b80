// The opacity of a widget and all in it, with fades.
#pragma once

#include <QGraphicsOpacityEffect>
#include <QVariantAnimation>
#include <QWidget>
#include <chrono>
#include <functional>

namespace klova {

/// The animation duration of fades that name none.
inline constexpr std::chrono::milliseconds kDefaultFade{250};

/// Owned by its widget, like the effect it sets.
class Layer final : public QObject {
public:
    explicit Layer(QWidget& widget);

    /// 0 to 1: where the widget stands, or will stand when its fade has ended.
    double opacity() const { return opacity_; }

    /// Takes effect at once and leaves a running fade to its end.
    void setOpacity(double opacity);

    /// Shows the widget going from one opacity to another, in place of an earlier fade, which then
    /// does not complete. `completed` runs from the event loop; without motion the fade takes no
    /// time.
    void animateOpacity(double from, double to, std::chrono::milliseconds duration = kDefaultFade,
                        std::function<void()> completed = {});

private:
    void show(double opacity);
    void finish();

    double opacity_ = 1.0;
    QGraphicsOpacityEffect* effect_; ///< the widget's
    QVariantAnimation animation_;
    std::function<void()> completed_;
};

} // namespace klova
