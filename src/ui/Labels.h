// The texts in panels.
#pragma once

#include <QColor>
#include <QFont>
#include <QLabel>
#include <QString>

namespace klova {

/// A new label that breaks its lines; a layout takes it over.
QLabel* makeLabel(const QString& text, const QFont& font, const QColor& color,
                  Qt::Alignment alignment = Qt::AlignCenter);

} // namespace klova
