// Texts that are longer or larger than their panel has room for.
#pragma once

#include <QWidget>

namespace klova {

/// Makes the labels in the view's layout smaller, step by step, until all of it fits into the
/// view's size.
void fitLabels(QWidget& view);

} // namespace klova
