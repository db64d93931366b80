// A child process that ends with its owner, and with the program that started it.
#pragma once

#include <chrono>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace klova::rig {

/// The whole environment of a child: nothing is inherited.
using Environment = std::map<std::string, std::string>;

struct ProcessOptions {
    Environment environment = {};
    /// Takes standard output and standard error; discarded where it is empty.
    std::filesystem::path output = {};
    /// Stays the caller's; takes standard output instead where it is not -1.
    int standardOutput = -1;
    /// Stays the caller's; the child inherits standard input where it is -1.
    int standardInput = -1;
};

/// Runs a command, found on PATH, in a process group of its own. The destructor asks it to end
/// and kills the whole group where it does not within two seconds.
class Process {
public:
    /// Throws std::system_error where no process can be made. A command that does not exist exits
    /// with 127.
    Process(const std::vector<std::string>& command, ProcessOptions options);
    ~Process();
    Process(Process&& other) noexcept;
    Process& operator=(Process&& other) noexcept;

    pid_t id() const { return id_; }

    /// Sends `number` to the process, not to its children.
    void signal(int number) const;

    /// The exit status once it has ended, 128 + the signal where one ended it; nothing when
    /// `deadline` passes before.
    std::optional<int> waitExit(std::chrono::milliseconds deadline);
    bool running() { return !waitExit(std::chrono::milliseconds(0)); }

    /// What it has written so far, empty where the output is discarded.
    std::string output() const;

private:
    void end();

    pid_t id_ = -1;
    std::optional<int> status_;
    std::filesystem::path output_;
};

/// Waits until the program has made `file`. Throws std::runtime_error with its output where it ends
/// before, or takes longer than five seconds.
void awaitFile(Process& program, const std::filesystem::path& file);

} // namespace klova::rig
