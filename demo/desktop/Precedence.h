// Going ahead of the machine's other work.
#pragma once

namespace klova::rig {

/// Lets this process and all that it starts from now on go first, where the system permits it:
/// input comes at the pace of a quick hand, and a desktop that cannot keep up loses clicks.
void takePrecedence();

} // namespace klova::rig
