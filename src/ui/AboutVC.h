// The content of the about panel.
#pragma once

#include "ui/Controller.h"

namespace klova {

class AboutVC final : public ViewController {
protected:
    void viewDidLoad() override;
};

} // namespace klova
