// Draws the keys and the mouse of a gesture, lit while they are pressed.
#pragma once

#include "ui/gestures/Gesture.h"
#include "ui/gestures/Keycaps.h"

#include <QRectF>

class QPainter;

namespace klova {

/// The activation keys and behind them the `controls`, in the middle of `area` and as large as
/// they fit in.
void paintKeys(QPainter& painter, const QRectF& area, const Keycaps& keycaps, unsigned controls,
               const Picture& picture);

} // namespace klova
