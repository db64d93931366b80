// What the preferences panel consists of and where it is.
#pragma once

#include <QAbstractButton>
#include <QCoreApplication>
#include <QLabel>
#include <QWidget>

namespace klova {

class HintLabel;

/// Its members are its children.
class PreferencesView final : public QWidget {
    Q_DECLARE_TR_FUNCTIONS(PreferencesView)

public:
    static constexpr int kTextWidth = 268; ///< points

    PreferencesView();

    QAbstractButton* cmdButton;
    QAbstractButton* altButton;
    QAbstractButton* ctrlButton;
    QLabel* textView;
    QAbstractButton* maximizeButton;
    QAbstractButton* centerButton;
    QAbstractButton* reopenButton;
    QAbstractButton* reopenButtonTwo;
    QAbstractButton* reopenButtonThree;
    QAbstractButton* launchButton;
    HintLabel* onlyOneButtonLabel;

private:
    void nameForScreenReaders();
    void arrange();
};

} // namespace klova
