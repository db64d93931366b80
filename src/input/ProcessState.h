// All process-wide variables at once.
#pragma once

namespace klova {

/// Puts every process-wide variable of the core back to its value at the start of the process.
void resetProcessState();

} // namespace klova
