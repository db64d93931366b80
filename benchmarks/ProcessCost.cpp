#include "ProcessCost.h"

#include "desktop/Files.h"
#include "desktop/WakeUps.h"

#include <filesystem>
#include <sstream>
#include <string>

namespace klova::bench {
namespace {

using std::filesystem::path;

path folderOf(pid_t process) { return path("/proc") / std::to_string(process); }

/// The number behind `name` in a file of "name: number" lines.
std::uint64_t field(const path& file, const std::string& name) {
    std::istringstream text(rig::readFile(file));
    for (std::string line; std::getline(text, line);)
        if (line.starts_with(name + ":"))
            return std::stoull(line.substr(name.size() + 1));
    return 0;
}

std::vector<path> threadsOf(const std::vector<pid_t>& processes) {
    std::vector<path> threads;
    std::error_code gone;
    for (const auto process : processes)
        for (const auto& thread :
             std::filesystem::directory_iterator(folderOf(process) / "task", gone))
            threads.push_back(thread.path());
    return threads;
}

} // namespace

std::vector<pid_t> familyOf(pid_t process) {
    std::vector<pid_t> family{process};
    for (std::size_t i = 0; i < family.size(); ++i)
        for (const auto& thread : threadsOf({family[i]})) {
            std::istringstream children(rig::readFile(thread / "children"));
            for (pid_t child = 0; children >> child;)
                family.push_back(child);
        }
    return family;
}

double processorMicroseconds(const std::vector<pid_t>& processes) {
    double nanoseconds = 0;
    for (const auto& thread : threadsOf(processes)) {
        double running = 0;
        std::istringstream(rig::readFile(thread / "schedstat")) >> running;
        nanoseconds += running;
    }
    return nanoseconds / 1000;
}

std::uint64_t wakeUps(const std::vector<pid_t>& processes) {
    std::uint64_t sum = 0;
    for (const auto process : processes)
        sum += rig::wakeUpsOf(process);
    return sum;
}

Memory memoryOf(const std::vector<pid_t>& processes) {
    const auto mebibytes = [](const path& file, const std::string& name) {
        return static_cast<double>(field(file, name)) / 1024;
    };
    Memory sum;
    for (const auto process : processes) {
        const auto file = folderOf(process) / "smaps_rollup";
        sum.resident += mebibytes(file, "Rss");
        // In proportion: what a forked process shares with the other is their own all the same.
        sum.written += mebibytes(file, "Pss_Anon");
        sum.own += mebibytes(file, "Pss_Anon") + mebibytes(file, "Private_Clean");
    }
    return sum;
}

} // namespace klova::bench
