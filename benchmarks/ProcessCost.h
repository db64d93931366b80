// What a running program takes: processor time, wake-ups and memory, with those it has started.
#pragma once

#include <cstdint>
#include <sys/types.h>
#include <vector>

namespace klova::bench {

/// The process and all that descend from it.
std::vector<pid_t> familyOf(pid_t process);

/// Since their start, over all threads of these processes.
double processorMicroseconds(const std::vector<pid_t>& processes);
std::uint64_t wakeUps(const std::vector<pid_t>& processes);

struct Memory {
    double resident = 0; // MiB
    double own = 0; // MiB that no other process has: of files, too, where nobody else reads them
    double written = 0; // MiB of that which are no file's
};
Memory memoryOf(const std::vector<pid_t>& processes);

} // namespace klova::bench
