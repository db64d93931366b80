#include "ui/FitLabels.h"

#include <QLabel>
#include <QLayout>

namespace klova {
namespace {

bool fits(const QWidget& view) {
    for (QLayout* layout : view.findChildren<QLayout*>())
        layout->invalidate(); // each remembers what its own labels needed
    return view.layout()->totalMinimumHeightForWidth(view.width()) <= view.height();
}

/// Returns whether any of them could be made smaller.
bool shrink(const QList<QLabel*>& labels) {
    constexpr int smallest = 8; // pixels
    bool shrunk = false;
    for (QLabel* label : labels) {
        QFont font = label->font();
        if (font.pixelSize() <= smallest)
            continue;
        font.setPixelSize(font.pixelSize() - 1);
        label->setFont(font);
        shrunk = true;
    }
    return shrunk;
}

} // namespace

void fitLabels(const QWidget& part, const QWidget& view) {
    const auto labels = part.findChildren<QLabel*>();
    while (!fits(view) && shrink(labels)) {
    }
}

} // namespace klova
