// Texts that are longer or larger than their panel has room for.
#pragma once

#include <QWidget>

namespace klova {

/// Makes the labels in `part` smaller, step by step, until all that the view around it has in its
/// layout fits into the view's size.
void fitLabels(const QWidget& part, const QWidget& view);

} // namespace klova
