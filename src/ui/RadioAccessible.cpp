#include "ui/RadioAccessible.h"

namespace klova {

RadioAccessible::RadioAccessible(QRadioButton& button)
    : QAccessibleWidget(&button, QAccessible::RadioButton), button_(button) {}

QAccessible::State RadioAccessible::state() const {
    QAccessible::State state = QAccessibleWidget::state();
    state.checkable = true;
    state.checked = button_.isChecked();
    return state;
}

QStringList RadioAccessible::actionNames() const {
    return QStringList(toggleAction()) + QAccessibleWidget::actionNames();
}

void RadioAccessible::doAction(const QString& action) {
    if (action == toggleAction())
        button_.click();
    else
        QAccessibleWidget::doAction(action);
}

} // namespace klova
