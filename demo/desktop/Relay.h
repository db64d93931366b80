// A place between programs and the X server, where something can happen between two requests.
#pragma once

#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <list>
#include <string>
#include <thread>
#include <vector>

namespace klova::rig {

/// Passes on what programs and server say to each other, on a thread of its own. Descriptors
/// (shared memory) do not get through.
class Relay {
public:
    /// To the server of this display (":99"). Throws std::system_error where that cannot be.
    explicit Relay(const std::string& server);
    ~Relay();
    Relay(const Relay&) = delete;
    Relay& operator=(const Relay&) = delete;

    /// What DISPLAY has to be for a program whose requests come this way.
    const std::string& display() const { return display_; }

    /// Counts requests from now on, and calls `action` once, on the relay's thread, when `count`
    /// have been passed on and before the next one is. What a program asks for while it keeps the
    /// server to itself is one step: nobody else gets a word in.
    void interrupt(int count, std::function<void()> action);

    /// Whether the action is still to come, or going on.
    bool waits() const { return count_ >= 0; }
    /// How long nobody has asked for anything.
    std::chrono::milliseconds silence() const;
    /// The action is not called any more.
    void cancel() { count_ = -1; }

private:
    struct Line {
        int program = -1;
        int server = -1;
        std::vector<std::uint8_t> unsent{}; // the beginning of a request
        bool begun = false;                 // past the greeting
        bool alone = false;                 // keeps the server to itself
    };

    void run();
    void accept();
    bool passRequests(Line& line);
    void count(Line& line, std::uint8_t request);

    std::string server_;
    std::string display_;
    std::array<int, 2> stop_{-1, -1}; // a pipe
    int listener_ = -1;
    std::list<Line> lines_;
    std::function<void()> action_;
    std::atomic<int> count_ = -1;
    std::atomic<int> passed_ = 0;
    std::atomic<std::chrono::steady_clock::time_point> lastRequest_{};
    std::thread thread_;
};

} // namespace klova::rig
