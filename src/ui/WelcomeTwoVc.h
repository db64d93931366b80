// The page of the tour that shows dragging and the double-click.
#pragma once

#include "ui/WelcomePage.h"

#include <QCoreApplication>

namespace klova {

class WelcomeTwoVc final : public WelcomePage {
    Q_DECLARE_TR_FUNCTIONS(WelcomeTwoVc)

    Content contentFor(const Keycaps& keycaps) const override;
};

} // namespace klova
