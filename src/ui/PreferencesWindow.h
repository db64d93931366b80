// The window of the preferences panel.
#pragma once

#include "ui/PanelWindow.h"

namespace klova {

class PreferencesWindow final : public PanelWindow {
public:
    /// Its attributes are its own, whatever is asked for.
    PreferencesWindow(const QRect& contentRect, std::uint32_t styleMask, BackingStore backing,
                      bool deferred);
};

} // namespace klova
