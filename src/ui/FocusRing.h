// The ring around the control that the keyboard would act on.
#pragma once

#include <QPainter>
#include <QWidget>

namespace klova {

/// Whether the person is using the keyboard and would act on this widget with it.
bool showsFocusRing(const QWidget& widget);

/// `frame` is the outer edge of the ring.
void paintFocusRing(QPainter& painter, const QRectF& frame, double cornerRadius);

} // namespace klova
