// The page of the tour that shows how windows are minimized and reopened.
#pragma once

#include "ui/WelcomePage.h"

#include <QCoreApplication>

namespace klova {

class WelcomeFourVc final : public WelcomePage {
    Q_DECLARE_TR_FUNCTIONS(WelcomeFourVc)

    Content contentFor(const Keycaps& keycaps) const override;
};

} // namespace klova
