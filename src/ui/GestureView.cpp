#include "ui/GestureView.h"

#include "ui/Motion.h"
#include "ui/gestures/GesturePainter.h"

#include <QAccessibleWidget>
#include <QPainter>
#include <QWindow>
#include <chrono>
#include <cmath>
#include <utility>

namespace klova {
namespace {

constexpr std::chrono::milliseconds kFrame{16};

QAccessibleInterface* accessiblePicture(const QString& /*className*/, QObject* object) {
    auto* view = dynamic_cast<GestureView*>(object);
    return view != nullptr ? new QAccessibleWidget(view, QAccessible::Graphic) : nullptr;
}

} // namespace

GestureView::GestureView(const Gesture& gesture, Keycaps keycaps)
    : gesture_(gesture), keycaps_(std::move(keycaps)), picture_(pictureAt(gesture, 0)) {
    QAccessible::installFactory(accessiblePicture); // only the first time counts
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, [this] {
        if (onScreen()) // or it sleeps until it is again
            tick();
    });
}

void GestureView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (still_)
        paintStills(painter, rect(), gesture_, keycaps_);
    else
        paintMoment(painter, rect(), gesture_, picture_, keycaps_);
}

void GestureView::showEvent(QShowEvent*) {
    if (QWindow* handle = window()->windowHandle())
        handle->installEventFilter(this);
    startRound();
}

bool GestureView::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Expose && onScreen() && !still_ && !playing())
        tick();
    return QWidget::eventFilter(watched, event);
}

void GestureView::hideEvent(QHideEvent*) { timer_.stop(); }

void GestureView::startRound() {
    still_ = wantsLessMotion();
    update();
    clock_.start();
    if (!still_)
        tick();
}

/// False also on a desktop that the person has left: its window stays shown.
bool GestureView::onScreen() const {
    const QWindow* handle = window()->windowHandle();
    return isVisible() && handle != nullptr && handle->isExposed();
}

/// Sleeps while nothing moves.
void GestureView::tick() {
    const double seconds = static_cast<double>(clock_.nsecsElapsed()) * 1e-9;
    if (seconds >= duration(gesture_)) {
        startRound();
        return;
    }
    const Picture picture = pictureAt(gesture_, seconds);
    const bool moved = picture != std::exchange(picture_, picture);
    if (moved)
        update();
    const std::chrono::duration<double> rest(restOfBeat(gesture_, seconds));
    timer_.start(moved ? kFrame : std::chrono::ceil<std::chrono::milliseconds>(rest));
}

} // namespace klova
