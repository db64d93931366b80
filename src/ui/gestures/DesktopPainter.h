// Draws the monitor of a gesture: its desktop, windows and pointer.
#pragma once

#include "ui/gestures/Gesture.h"

#include <QRectF>
#include <optional>

class QPainter;

namespace klova {

/// Width to height of the monitor with its stand.
double monitorAspect();

/// As large as fits into `area`, in the middle. `trace` is outlined as the place where the window
/// came from.
void paintMonitor(QPainter& painter, const QRectF& area, const Picture& picture,
                  const std::optional<Frame>& trace = std::nullopt);

} // namespace klova
