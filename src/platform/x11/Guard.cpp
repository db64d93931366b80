#include "platform/x11/Guard.h"

#include "platform/Diagnostics.h"
#include "platform/x11/Heartbeat.h"
#include "platform/x11/XInput.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <optional>
#include <poll.h>
#include <string>
#include <sys/prctl.h>
#include <unistd.h>
#include <utility>
#include <xcb/xcbext.h>

namespace klova::x11 {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kPatience{1500};

/// After a system sleep both processes wake together, and a beat may come a moment late.
constexpr std::chrono::milliseconds kGrace{100};

constexpr std::chrono::milliseconds kAnswer{200};

/// Sees each grab of the keyboard for itself: a process that was stopped before the press that
/// began the grab does not announce it.
class Guard {
public:
    Guard(pid_t klova, UniqueDescriptor beats) : klova_(klova), beats_(std::move(beats)) {}

    /// Returns when there is nothing left to watch over.
    void watch();

private:
    bool readBeats();
    void readGrabs(Connection& connection);
    bool unanswered() const;
    std::optional<Clock::time_point> due() const;
    void endKlova(Connection& connection) const;

    pid_t klova_;
    UniqueDescriptor beats_;
    Beat beat_;
    Clock::time_point beatAt_;
    std::optional<xcb_timestamp_t> grab_; ///< the one that lasts, whose ever it is
    Clock::time_point unansweredSince_;
};

/// Whether something can be read, here or there, before the time is up.
bool isReadable(int one, int other, std::optional<std::chrono::milliseconds> atMost) {
    std::array<pollfd, 2> descriptors{pollfd{one, POLLIN, 0}, pollfd{other, POLLIN, 0}};
    return ::poll(descriptors.data(), descriptors.size(),
                  atMost ? static_cast<int>(atMost->count()) : -1) != 0;
}

/// Whether the process was stopped, by a signal or a debugger.
bool isStopped(pid_t process) {
    std::ifstream file("/proc/" + std::to_string(process) + "/stat");
    std::string text;
    std::getline(file, text);
    const auto name = text.rfind(')'); // which may hold anything; the state follows
    return name != std::string::npos && name + 2 < text.size() &&
           (text[name + 2] == 'T' || text[name + 2] == 't');
}

/// Whether the server answers at once: while another program has it in its grab it does not.
bool answers(Connection& connection) {
    const auto end = Clock::now() + kAnswer;
    const auto cookie = xcb_get_input_focus(connection.get());
    connection.flush();
    void* reply = nullptr;
    xcb_generic_error_t* error = nullptr;
    while (xcb_poll_for_reply(connection.get(), cookie.sequence, &reply, &error) == 0) {
        const auto left = std::chrono::floor<std::chrono::milliseconds>(end - Clock::now());
        if (left.count() <= 0) {
            xcb_discard_reply(connection.get(), cookie.sequence);
            return false;
        }
        isReadable(connection.descriptor(), -1, left);
    }
    own(reply);
    own(error);
    return true;
}

void Guard::watch() {
    Connection connection;
    if (!connection.missingExtensions().empty())
        return;
    selectXInputEvents(connection, kMasterKeyboard,
                       XCB_INPUT_XI_EVENT_MASK_FOCUS_IN | XCB_INPUT_XI_EVENT_MASK_FOCUS_OUT);
    connection.flush();
    constexpr int nothing = -1;
    while (true) {
        readGrabs(connection);
        if (!readBeats() || connection.lost())
            return;
        std::optional<std::chrono::milliseconds> left;
        if (const auto end = due())
            left = std::max(std::chrono::ceil<std::chrono::milliseconds>(*end - Clock::now()),
                            std::chrono::milliseconds::zero());
        if (isReadable(beats_.get(), connection.descriptor(), left) ||
            isReadable(beats_.get(), nothing, kGrace))
            continue;
        if (isStopped(klova_) || answers(connection))
            return endKlova(connection);
        beatAt_ = Clock::now(); // with a server that answers nobody Klova cannot go on either
    }
}

/// False when the last writer has gone.
bool Guard::readBeats() {
    Beat beat;
    ssize_t size = 0;
    while ((size = ::read(beats_.get(), &beat, sizeof beat)) == sizeof beat) {
        beat_ = beat;
        beatAt_ = Clock::now();
    }
    return size < 0 && (errno == EAGAIN || errno == EINTR);
}

void Guard::readGrabs(Connection& connection) {
    while (const auto event = connection.poll()) {
        if (endsKeyboardGrab(connection, *event))
            grab_.reset();
        const auto time = timeOfKeyboardGrab(connection, *event);
        if (!time)
            continue;
        if (!unanswered())
            unansweredSince_ = Clock::now();
        grab_ = time;
    }
}

bool Guard::unanswered() const {
    return grab_ && beat_.window != XCB_WINDOW_NONE &&
           (beat_.answered == 0 || static_cast<std::int32_t>(*grab_ - beat_.answered) > 0);
}

std::optional<Clock::time_point> Guard::due() const {
    if (unanswered())
        return std::max(unansweredSince_, beatAt_) + kPatience;
    return beat_.holding != 0 ? std::optional(beatAt_ + kPatience) : std::nullopt;
}

/// Ending the connection frees the keyboard also while the process cannot even die, as in the
/// middle of a write to a disk that hangs. Ending the process frees it also where it was stopped
/// with the whole server in its grab, which holds every request of ours back.
void Guard::endKlova(Connection& connection) const {
    xcb_kill_client(connection.get(), beat_.window);
    connection.flush();
    if (::getppid() == klova_)
        ::kill(klova_, SIGKILL);
    errorLine("did not answer while it held the keyboard, and was ended to free it.");
}

/// A session of its own, so that neither Ctrl+C nor Ctrl+Z in a terminal reaches the guard.
[[noreturn]] void runGuard(pid_t klova, UniqueDescriptor beats) {
    ::setsid();
    ::prctl(PR_SET_NAME, "klova-guard");
    try {
        Guard(klova, std::move(beats)).watch();
    } catch (const DisplayUnreachable&) { // Klova notices that nobody listens, and says so
    }
    std::_Exit(0);
}

} // namespace

UniqueDescriptor startGuard() {
    std::array<int, 2> ends{-1, -1};
    const pid_t klova = ::getpid();
    const pid_t guard = ::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) == 0 ? ::fork() : -1;
    UniqueDescriptor beats(ends[0]);
    UniqueDescriptor heart(ends[1]);
    if (guard == 0) {
        heart = UniqueDescriptor();
        runGuard(klova, std::move(beats));
    }
    if (guard > 0)
        return heart;
    errorLine("runs without a guard: the system has no room for another process.");
    return UniqueDescriptor();
}

} // namespace klova::x11
