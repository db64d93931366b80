#include "ui/Layer.h"

#include "ui/Motion.h"

#include <utility>

namespace klova {

Layer::Layer(QWidget& widget) : QObject(&widget), effect_(new QGraphicsOpacityEffect(&widget)) {
    widget.setGraphicsEffect(effect_);
    show(opacity_);
    connect(&animation_, &QVariantAnimation::valueChanged, this,
            [this](const QVariant& value) { show(value.toDouble()); });
    connect(
        &animation_, &QVariantAnimation::finished, this, [this] { finish(); },
        Qt::QueuedConnection);
}

void Layer::setOpacity(double opacity) {
    opacity_ = opacity;
    if (animation_.state() != QAbstractAnimation::Running)
        show(opacity);
}

void Layer::animateOpacity(double from, double to, std::chrono::milliseconds duration,
                           std::function<void()> completed) {
    animation_.stop();
    completed_ = std::move(completed);
    animation_.setStartValue(from);
    animation_.setEndValue(to);
    animation_.setDuration(wantsLessMotion() ? 0 : static_cast<int>(duration.count()));
    animation_.start();
}

void Layer::finish() {
    if (animation_.state() == QAbstractAnimation::Running)
        return; // of another fade, begun meanwhile
    show(opacity_);
    if (const auto completed = std::exchange(completed_, nullptr))
        completed();
}

void Layer::show(double opacity) {
    effect_->setOpacity(opacity);
    effect_->setEnabled(opacity < 1.0); // drawn straight, and sharp, where nothing shines through
}

} // namespace klova
