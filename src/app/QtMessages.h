// What Qt has to say about itself.
#pragma once

#include <functional>

namespace klova {

/// Shows only what makes Qt end the process, as one sentence and with status 70. Qt warns before
/// it ends the process over a broken connection: `atWarning` is called at each warning and may
/// end it in a better way.
void handleQtMessages(std::function<void()> atWarning);

} // namespace klova
