// The page of the tour that says what the activation keys are.
#pragma once

#include "ui/WelcomePage.h"

#include <QCoreApplication>

namespace klova {

class WelcomeOneVc final : public WelcomePage {
    Q_DECLARE_TR_FUNCTIONS(WelcomeOneVc)

    Content contentFor(const Keycaps& keycaps) const override;
};

} // namespace klova
