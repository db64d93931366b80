// What a screen reader hears of a radio button that panels switch by rules of their own.
#pragma once

#include <QAccessibleWidget>
#include <QRadioButton>

namespace klova {

/// Qt takes a button for a radio button only where it also sees to it that one is always chosen.
class RadioAccessible final : public QAccessibleWidget {
public:
    explicit RadioAccessible(QRadioButton& button);

    QAccessible::State state() const override;
    QStringList actionNames() const override;
    void doAction(const QString& action) override;

private:
    QRadioButton& button_;
};

} // namespace klova
