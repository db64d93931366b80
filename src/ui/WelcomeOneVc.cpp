#include "ui/WelcomeOneVc.h"

#include "ui/gestures/TourGestures.h"

namespace klova {

WelcomePage::Content WelcomeOneVc::contentFor(const Keycaps& keycaps) const {
    return {kHoldingKeys, tr("Your activation keys"),
            tr("Hold %1 and Klova listens: its icon lights up. You choose the keys in the "
               "preferences.")
                .arg(spoken(keycaps)),
            tr("%1 go down one after another. The icon in the bar lights up, the window in front "
               "is outlined. The keys come up, and all is as before.")
                .arg(spoken(keycaps))};
}

} // namespace klova
