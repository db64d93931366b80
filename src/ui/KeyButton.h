// Two-state buttons that look like the keys of a keyboard.
#pragma once

#include "ui/ButtonKeys.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QRadioButton>
#include <QString>
#include <type_traits>
#include <utility>

namespace klova {

/// How a button is drawn beside its title and state.
struct KeyLook {
    double height;      ///< points, where there is room and the texts need no more
    QString caption;    ///< in small under the title, may be empty
    double titleSize;   ///< points
    bool raised = true; ///< as a key that can be pressed down
};

QSize sizeOfKey(const KeyLook& look);
QSize smallestSizeOfKey(const KeyLook& look);
void paintKey(QAbstractButton& button, const KeyLook& look, bool radio);

/// Lets screen readers know the radio buttons below as such.
void announceRadioButtons();

/// 1 or 0.
inline int stateOf(const QAbstractButton& button) { return button.isChecked() ? 1 : 0; }

/// Flips the state without a click's consequences.
void setNextState(QAbstractButton& button);

/// `Base` says what the button is to a screen reader.
template <class Base> class KeyButtonOf final : public Base {
public:
    explicit KeyButtonOf(KeyLook look) : look_(std::move(look)) {
        this->setAutoExclusive(false); // the panel's own rules decide
        announceRadioButtons();
        this->setAttribute(Qt::WA_Hover);
        this->setFocusPolicy(Qt::StrongFocus);
    }

    QSize sizeHint() const override { return sizeOfKey(look_); }
    QSize minimumSizeHint() const override { return smallestSizeOfKey(look_); }

protected:
    bool hitButton(const QPoint& point) const override { return this->rect().contains(point); }

    void keyPressEvent(QKeyEvent* event) override {
        if (!answerKey(*this, *event))
            Base::keyPressEvent(event);
    }

    void paintEvent(QPaintEvent*) override {
        paintKey(*this, look_, std::is_same_v<Base, QRadioButton>);
    }

private:
    KeyLook look_;
};

using KeyCheckButton = KeyButtonOf<QCheckBox>;
using KeyRadioButton = KeyButtonOf<QRadioButton>;

} // namespace klova
