// The window of the about panel.
#pragma once

#include "ui/PanelWindow.h"

namespace klova {

class AboutWindow final : public PanelWindow {
public:
    /// Its attributes are its own, whatever is asked for.
    AboutWindow(const QRect& contentRect, std::uint32_t styleMask, BackingStore backing,
                bool deferred);
};

} // namespace klova
