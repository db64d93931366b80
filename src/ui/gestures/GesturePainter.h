// Lays out and draws a gesture as a whole: monitor, keys and caption.
#pragma once

#include "ui/gestures/Gesture.h"
#include "ui/gestures/Keycaps.h"

#include <QRectF>

class QPainter;

namespace klova {

/// One moment: the monitor over the keys over the caption.
void paintMoment(QPainter& painter, const QRectF& area, const Gesture& gesture,
                 const Picture& picture, const Keycaps& keycaps);

/// The moments that tell the gesture without motion, one below the other.
void paintStills(QPainter& painter, const QRectF& area, const Gesture& gesture,
                 const Keycaps& keycaps);

} // namespace klova
