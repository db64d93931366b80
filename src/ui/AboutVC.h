// The content of the about panel.
#pragma once

#include "ui/BackgroundImageView.h"
#include "ui/Controller.h"

#include <QPointer>

namespace klova {

class AboutVC final : public ViewController {
public:
    QPointer<BackgroundImageView> backgroundImageView; ///< null until the view was loaded

    void viewDidLoad() override;
};

} // namespace klova
