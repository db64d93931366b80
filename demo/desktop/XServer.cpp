#include "desktop/XServer.h"

#include "desktop/DisplayKey.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <unistd.h>

namespace klova::rig {
namespace {

class Pipe {
public:
    Pipe() {
        if (::pipe2(ends_.data(), O_CLOEXEC) != 0)
            throw std::runtime_error("cannot make a pipe");
    }
    ~Pipe() {
        ::close(ends_[0]);
        closeWriting();
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    int writing() const { return ends_[1]; }
    void closeWriting() {
        if (ends_[1] >= 0)
            ::close(ends_[1]);
        ends_[1] = -1;
    }

    /// Up to the line's end; empty where it does not come within ten seconds.
    std::string readLine() const {
        std::string line;
        char letter = 0;
        while (canRead() && ::read(ends_[0], &letter, 1) == 1) {
            if (letter == '\n')
                return line;
            line += letter;
        }
        return {};
    }

private:
    bool canRead() const {
        pollfd readable{ends_[0], POLLIN, 0};
        int ready = 0;
        do
            ready = ::poll(&readable, 1, 10000);
        while (ready < 0 && errno == EINTR);
        return ready == 1;
    }

    std::array<int, 2> ends_{-1, -1};
};

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

std::vector<std::string> programFor(ScreenSize size, ServerKind kind) {
    const auto extent = std::to_string(size.width) + "x" + std::to_string(size.height);
    switch (kind) {
    case ServerKind::nested:
        return {"Xephyr", "-screen", extent, "-title", "Klova"};
    case ServerKind::onWayland:
        return {"Xwayland"};
    case ServerKind::offScreen:
        break;
    }
    return {"Xvfb", "-screen", "0", extent + "x24"};
}

std::vector<std::string> commandFor(ScreenSize size, ServerKind kind) {
    auto command = programFor(size, kind);
    command.insert(command.end(),
                   {"-auth", displayKey(), "-displayfd", "1", "-nolisten", "tcp", "-noreset"});
    return command;
}

Process start(ScreenSize size, ServerKind kind, const std::vector<std::string>& options,
              std::string& display) {
    Pipe pipe;
    auto command = commandFor(size, kind);
    command.insert(command.end(), options.begin(), options.end());
    Environment environment{{"PATH", variable("PATH")}};
    if (kind != ServerKind::offScreen)
        for (const char* name :
             {"DISPLAY", "XAUTHORITY", "HOME", "WAYLAND_DISPLAY", "XDG_RUNTIME_DIR"})
            environment[name] = variable(name);
    Process process(command,
                    {.environment = environment, .output = {}, .standardOutput = pipe.writing()});
    pipe.closeWriting();
    const auto number = pipe.readLine();
    if (number.empty())
        throw std::runtime_error("the X server does not start");
    display = ":" + number;
    return process;
}

} // namespace

XServer::XServer(ScreenSize size, ServerKind kind, const std::vector<std::string>& options)
    : size_(size), process_(start(size, kind, options, display_)) {}

} // namespace klova::rig
