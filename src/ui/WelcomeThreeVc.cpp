#include "ui/WelcomeThreeVc.h"

#include "ui/KeyLegends.h"
#include "ui/gestures/TourGestures.h"

namespace klova {

WelcomePage::Content WelcomeThreeVc::contentFor(const Keycaps& keycaps) const {
    return {kSnappingWindow, tr("Snap with the arrows"),
            tr("One arrow gives the window half of the screen, two together a quarter. %1, %2, %3 "
               "and %4 do the same. Let go of the arrows first.")
                .arg(legendOf(key::w), legendOf(key::a), legendOf(key::s), legendOf(key::d)),
            tr("While %1 are held, the left arrow puts a window on the left half of the screen, "
               "and the up arrow with it on the upper left quarter. The right arrow puts it on the "
               "right half, the down arrow with it on the lower right quarter. The arrows come up "
               "before the other keys.")
                .arg(spoken(keycaps))};
}

} // namespace klova
