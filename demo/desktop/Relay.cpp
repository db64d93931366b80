#include "desktop/Relay.h"

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace klova::rig {
namespace {

int openSocket() { return ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0); }

/// Binds or connects the socket to where programs look for a display first: a name that needs no
/// file.
bool reach(decltype(&::connect) how, int socket, const std::string& display) {
    const auto path = std::string(1, '\0') + "/tmp/.X11-unix/X" + display.substr(1);
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
    path.copy(address.sun_path, sizeof address.sun_path);
    const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + path.size());
    return how(socket, reinterpret_cast<const sockaddr*>(&address), size) == 0;
}

bool sendAll(int socket, const std::uint8_t* bytes, std::size_t size) {
    while (size > 0) {
        const auto sent = ::send(socket, bytes, size, MSG_NOSIGNAL);
        if (sent <= 0)
            return false;
        bytes += sent;
        size -= static_cast<std::size_t>(sent);
    }
    return true;
}

/// Appends what has come; false at the end.
bool receive(int socket, std::vector<std::uint8_t>& bytes) {
    std::array<std::uint8_t, 16384> block{};
    const auto count = ::recv(socket, block.data(), block.size(), 0);
    if (count > 0)
        bytes.insert(bytes.end(), block.data(), block.data() + count);
    return count > 0;
}

std::size_t number(const std::vector<std::uint8_t>& bytes, std::size_t at, std::size_t size) {
    std::size_t value = 0;
    std::memcpy(&value, bytes.data() + at, size); // of a program on this machine
    return value;
}

/// Of the greeting with the key that follows it.
std::size_t greetingSize(const std::vector<std::uint8_t>& bytes) {
    const auto padded = [](std::size_t size) { return (size + 3) / 4 * 4; };
    return bytes.size() < 12 ? 12 : 12 + padded(number(bytes, 6, 2)) + padded(number(bytes, 8, 2));
}

std::size_t requestSize(const std::vector<std::uint8_t>& bytes) {
    if (bytes.size() < 4)
        return 4;
    if (const auto words = number(bytes, 2, 2))
        return 4 * words;
    return bytes.size() < 8 ? 8 : 4 * number(bytes, 4, 4); // a large one
}

} // namespace

Relay::Relay(const std::string& server) : server_(server), listener_(openSocket()) {
    constexpr int first = 30'000, last = 31'000; // far beyond those of real servers
    int number = first;
    do
        display_ = ":" + std::to_string(number);
    while (!reach(&::bind, listener_, display_) && ++number < last);
    if (::listen(listener_, 8) != 0 || ::pipe2(stop_.data(), O_CLOEXEC) != 0)
        throw std::system_error(errno, std::generic_category(), "a relay");
    thread_ = std::thread([this] { run(); });
}

Relay::~Relay() {
    ::close(stop_[1]);
    thread_.join();
    for (const Line& line : lines_) {
        ::close(line.program);
        ::close(line.server);
    }
    ::close(stop_[0]);
    ::close(listener_);
}

void Relay::interrupt(int count, std::function<void()> action) {
    cancel();
    action_ = std::move(action);
    passed_ = 0;
    count_ = count;
}

std::chrono::milliseconds Relay::silence() const {
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() -
                                                                 lastRequest_.load());
}

void Relay::run() {
    std::vector<pollfd> sources;
    while (true) {
        sources = {{stop_[0], POLLIN, 0}, {listener_, POLLIN, 0}};
        for (const Line& line : lines_)
            sources.insert(sources.end(), {{line.program, POLLIN, 0}, {line.server, POLLIN, 0}});
        ::poll(sources.data(), sources.size(), -1);
        if (sources[0].revents != 0)
            return;
        auto source = sources.begin() + 2;
        for (auto line = lines_.begin(); line != lines_.end(); source += 2) {
            std::vector<std::uint8_t> answer;
            bool open = source[0].revents == 0 || passRequests(*line);
            if (open && source[1].revents != 0)
                open = receive(line->server, answer) &&
                       sendAll(line->program, answer.data(), answer.size());
            if (!open) {
                ::close(line->program);
                ::close(line->server);
            }
            line = open ? std::next(line) : lines_.erase(line);
        }
        if (sources[1].revents != 0)
            accept();
    }
}

void Relay::accept() {
    Line line{::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC), openSocket()};
    reach(&::connect, line.server, server_); // without a server the line ends at once
    lines_.push_back(std::move(line));
}

bool Relay::passRequests(Line& line) {
    auto& bytes = line.unsent;
    if (!receive(line.program, bytes))
        return false;
    while (true) {
        const auto size = line.begun ? requestSize(bytes) : greetingSize(bytes);
        if (bytes.size() < size)
            return true;
        if (line.begun)
            count(line, bytes[0]);
        if (!sendAll(line.server, bytes.data(), size))
            return false;
        line.begun = true;
        bytes.erase(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size));
    }
}

void Relay::count(Line& line, std::uint8_t request) {
    lastRequest_ = std::chrono::steady_clock::now();
    constexpr std::uint8_t grabServer = 36, ungrabServer = 37;
    if (!line.alone) {
        if (waits() && passed_ >= count_) {
            action_();
            cancel();
        }
        ++passed_;
    }
    if (request == grabServer || request == ungrabServer)
        line.alone = request == grabServer;
}

} // namespace klova::rig
