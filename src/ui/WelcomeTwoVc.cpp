#include "ui/WelcomeTwoVc.h"

#include "ui/gestures/TourGestures.h"

namespace klova {

WelcomePage::Content WelcomeTwoVc::contentFor(const Keycaps& keycaps) const {
    return {kMovingWindow, tr("Drag and double-click"),
            tr("Drag the window from anywhere, once this tour is closed. Double-click to "
               "maximize, and again to center it."),
            tr("While %1 are held, the mouse drags a window by its middle with the left button. A "
               "double-click makes it fill the screen, another one puts it into the middle at half "
               "the size.")
                .arg(spoken(keycaps))};
}

} // namespace klova
