// The page of the tour that shows snapping.
#pragma once

#include "ui/WelcomePage.h"

#include <QCoreApplication>

namespace klova {

class WelcomeThreeVc final : public WelcomePage {
    Q_DECLARE_TR_FUNCTIONS(WelcomeThreeVc)

    Content contentFor(const Keycaps& keycaps) const override;
};

} // namespace klova
