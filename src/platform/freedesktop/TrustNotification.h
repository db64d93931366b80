// The lack of trust as a notification of the desktop.
#pragma once

#include "platform/TrustPrompt.h"

namespace klova {

/// Needs a running QCoreApplication to be shown. Says the same on standard error, because there may
/// be nobody on the desktop who shows notifications.
class TrustNotification final : public TrustPrompt {
public:
    void show(const LackOfTrust& lack) override;
};

} // namespace klova
