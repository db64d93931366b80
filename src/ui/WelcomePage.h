// What the pages of the welcome tour have in common: a title, a gesture and a text.
#pragma once

#include "ui/Controller.h"
#include "ui/gestures/Gesture.h"
#include "ui/gestures/Keycaps.h"

#include <QString>

namespace klova {

class WelcomePage : public ViewController {
protected:
    struct Content {
        const Gesture& gesture;
        QString title;
        QString text;
        QString description; ///< the gesture in words, for those who do not see it
    };

    void viewDidLoad() final;

private:
    virtual Content contentFor(const Keycaps& keycaps) const = 0;
};

} // namespace klova
