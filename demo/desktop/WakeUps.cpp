#include "desktop/WakeUps.h"

#include "desktop/Files.h"

namespace klova::rig {

long wakeUpsOf(pid_t process, const std::string& thread) {
    static constexpr std::string_view kField = "\nvoluntary_ctxt_switches:";
    long count = 0;
    const auto tasks = "/proc/" + std::to_string(process) + "/task";
    for (const auto& task : std::filesystem::directory_iterator(tasks)) {
        const auto status = readFile(task.path() / "status");
        const auto at = status.find(kField);
        if (readFile(task.path() / "comm") == thread + "\n" && at != std::string::npos)
            count += std::stol(status.substr(at + kField.size()));
    }
    return count;
}

} // namespace klova::rig
