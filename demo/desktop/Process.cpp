#include "desktop/Process.h"

#include "desktop/Files.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace klova::rig {
namespace {

std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> result;
    result.reserve(texts.size() + 1);
    for (auto& text : texts)
        result.push_back(text.data());
    result.push_back(nullptr);
    return result;
}

std::vector<std::string> asTexts(const Environment& environment) {
    std::vector<std::string> result;
    for (const auto& [name, value] : environment)
        result.push_back(std::string(name).append("=").append(value));
    return result;
}

/// In the child, between fork and exec: system calls only.
[[noreturn]] void become(char* const* command, char* const* environment, int output,
                         const ProcessOptions& options, pid_t parent) {
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parent)
        ::_exit(127);
    if (options.standardInput >= 0)
        ::dup2(options.standardInput, STDIN_FILENO);
    ::dup2(options.standardOutput >= 0 ? options.standardOutput : output, STDOUT_FILENO);
    ::dup2(output, STDERR_FILENO);
    ::execvpe(command[0], command, environment);
    ::_exit(127);
}

} // namespace

Process::Process(const std::vector<std::string>& command, ProcessOptions options)
    : output_(std::move(options.output)) {
    auto words = command;
    auto variables = asTexts(options.environment);
    const auto arguments = pointers(words);
    const auto environment = pointers(variables);
    const int output = ::open(output_.empty() ? "/dev/null" : output_.c_str(),
                              O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    const pid_t parent = ::getpid();
    id_ = ::fork();
    if (id_ == 0)
        become(arguments.data(), environment.data(), output, options, parent);
    ::close(output);
    if (id_ < 0)
        throw std::system_error(errno, std::generic_category(), "cannot start " + command.front());
    ::setpgid(id_, id_);
}

Process::~Process() { end(); }

Process::Process(Process&& other) noexcept
    : id_(std::exchange(other.id_, -1)), status_(other.status_), output_(std::move(other.output_)) {
}

Process& Process::operator=(Process&& other) noexcept {
    if (this != &other) {
        end();
        id_ = std::exchange(other.id_, -1);
        status_ = other.status_;
        output_ = std::move(other.output_);
    }
    return *this;
}

void Process::signal(int number) const {
    if (id_ > 0 && !status_)
        ::kill(id_, number);
}

std::optional<int> Process::waitExit(std::chrono::milliseconds deadline) {
    if (status_ || id_ <= 0)
        return status_;
    const int descriptor = static_cast<int>(::syscall(SYS_pidfd_open, id_, 0));
    pollfd ended{descriptor, POLLIN, 0};
    ::poll(&ended, 1, static_cast<int>(deadline.count()));
    ::close(descriptor);
    int status = 0;
    if (::waitpid(id_, &status, WNOHANG) == id_)
        status_ = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return status_;
}

std::string Process::output() const { return output_.empty() ? "" : readFile(output_); }

void Process::end() {
    if (id_ <= 0)
        return;
    signal(SIGTERM);
    waitExit(std::chrono::seconds(2));
    ::kill(-id_, SIGKILL);
    waitExit(std::chrono::seconds(10));
    id_ = -1;
}

void awaitFile(Process& program, const std::filesystem::path& file) {
    for (int attempt = 0; attempt < 1000 && !std::filesystem::exists(file); ++attempt)
        if (program.waitExit(std::chrono::milliseconds(5)))
            break;
    if (!std::filesystem::exists(file))
        throw std::runtime_error("no " + file.string() + ": " + program.output());
}

} // namespace klova::rig
