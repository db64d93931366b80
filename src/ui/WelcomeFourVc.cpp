#include "ui/WelcomeFourVc.h"

#include "ui/gestures/TourGestures.h"

namespace klova {

WelcomePage::Content WelcomeFourVc::contentFor(const Keycaps& keycaps) const {
    return {kMinimizingWindow, tr("Minimize and reopen"),
            tr("A right-click minimizes the window in front, %1 brings it back. All of this is in "
               "the menu of Klova's icon, too.")
                .arg(keycaps.reopen),
            tr("While %1 are held, a click of the right mouse button minimizes a window into the "
               "bar. The key %2 brings it back.")
                .arg(spoken(keycaps), keycaps.reopen)};
}

} // namespace klova
