// What Qt has to say about itself.
#pragma once

namespace klova {

/// Shows only what makes Qt end the process, as one sentence and with status 70.
void handleQtMessages();

} // namespace klova
