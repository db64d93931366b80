// How often a thread of another program has been woken.
#pragma once

#include <cstdint>
#include <string>
#include <sys/types.h>

namespace klova::rig {

/// For all threads, or those of this name, since their start: as often as they have fallen asleep.
/// 0 where there are none.
std::uint64_t wakeUpsOf(pid_t process, const std::string& thread = {});

} // namespace klova::rig
