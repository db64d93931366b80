#include "desktop/WakeUps.h"

#include "desktop/Files.h"

namespace klova::rig {

std::uint64_t wakeUpsOf(pid_t process, const std::string& thread) {
    static constexpr std::string_view kField = "\nvoluntary_ctxt_switches:";
    std::uint64_t count = 0;
    std::error_code gone;
    const auto tasks = "/proc/" + std::to_string(process) + "/task";
    for (const auto& task : std::filesystem::directory_iterator(tasks, gone)) {
        const auto status = readFile(task.path() / "status");
        const auto at = status.find(kField);
        const bool asked = thread.empty() || readFile(task.path() / "comm") == thread + "\n";
        if (asked && at != std::string::npos)
            count += std::stoull(status.substr(at + kField.size()));
    }
    return count;
}

} // namespace klova::rig
