// The window of the welcome panel.
#pragma once

#include "ui/PanelWindow.h"

namespace klova {

class WelcomeWindow final : public PanelWindow {
public:
    /// Its attributes are its own, whatever is asked for.
    WelcomeWindow(const QRect& contentRect, std::uint32_t styleMask, BackingStore backing,
                  bool deferred);
};

} // namespace klova
