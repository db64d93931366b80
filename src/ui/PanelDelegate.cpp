#include "ui/PanelDelegate.h"

#include "input/ShellState.h"
#include "platform/FatalError.h"

namespace klova {

PanelDelegate& panelDelegate() {
    auto* delegate = dynamic_cast<PanelDelegate*>(applicationDelegate);
    if (delegate == nullptr)
        fatalError("the application has no delegate that knows panels");
    return *delegate;
}

} // namespace klova
