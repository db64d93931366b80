// Shows a gesture: playing it over and over, or as stills where the person wants less motion.
#pragma once

#include "ui/gestures/Gesture.h"
#include "ui/gestures/Keycaps.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

namespace klova {

/// Plays only while it is on show, from the start each time. To assistive technology it is a
/// picture; its name and description are the caller's.
class GestureView final : public QWidget {
public:
    /// `gesture` is borrowed for good.
    GestureView(const Gesture& gesture, Keycaps keycaps);

    /// Whether time goes on in it.
    bool playing() const { return timer_.isActive(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool onScreen() const;
    void startRound();
    void tick();

    const Gesture& gesture_;
    Keycaps keycaps_;
    Picture picture_;
    bool still_ = false;
    QElapsedTimer clock_; ///< since the start of this round
    QTimer timer_;
};

} // namespace klova
