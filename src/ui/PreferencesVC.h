// The content of the preferences panel.
#pragma once

#include "ui/Controller.h"

namespace klova {

class PreferencesVC final : public ViewController {
protected:
    void viewDidLoad() override;
};

} // namespace klova
