#include "ui/ButtonKeys.h"

#include <QRadioButton>
#include <QWidget>

namespace klova {
namespace {

/// 1 forward, -1 back, 0 for every other key.
int stepOf(int key, Qt::LayoutDirection direction) {
    const int right = direction == Qt::RightToLeft ? -1 : 1;
    switch (key) {
    case Qt::Key_Down:
        return 1;
    case Qt::Key_Up:
        return -1;
    case Qt::Key_Right:
        return right;
    case Qt::Key_Left:
        return -right;
    default:
        return 0;
    }
}

void choose(QAbstractButton& button) {
    button.setFocus(Qt::TabFocusReason);
    if (!button.isChecked())
        button.click();
}

} // namespace

bool answerKey(QAbstractButton& button, const QKeyEvent& event) {
    if (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter) {
        if (!event.isAutoRepeat())
            button.click();
        return true;
    }
    const int step = stepOf(event.key(), button.layoutDirection());
    auto* radio = qobject_cast<QRadioButton*>(&button);
    if (step == 0 || radio == nullptr)
        return false;
    const auto radios =
        radio->parentWidget()->findChildren<QRadioButton*>(QString(), Qt::FindDirectChildrenOnly);
    choose(*radios[(radios.indexOf(radio) + step + radios.size()) % radios.size()]);
    return true;
}

} // namespace klova
