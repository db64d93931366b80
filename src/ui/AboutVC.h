// The content of the about panel.
#pragma once

#include "ui/BackgroundImageView.h"
#include "ui/Controller.h"

#include <QCoreApplication>
#include <QPointer>

namespace klova {

class AboutVC final : public ViewController {
    Q_DECLARE_TR_FUNCTIONS(AboutVC)

public:
    QPointer<BackgroundImageView> backgroundImageView; ///< null until the view was loaded

    void viewDidLoad() override;
};

} // namespace klova
