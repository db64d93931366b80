// Waiting for something to become true, with a deadline and an account of what was seen.
#pragma once

#include "desktop/Display.h"
#include "desktop/Process.h"

#include <chrono>
#include <functional>
#include <string>
#include <utility>

namespace klova::rig {

inline constexpr std::chrono::milliseconds kDeadline{10000};

/// Asks `predicate` again at each event of the display (dropping those that have arrived), and
/// every few milliseconds for what no event tells of. Returns whether it came true by the
/// deadline; where it did not, says on standard error what was awaited and what `describe` sees.
bool waitUntil(Display& display, const std::string& what, const std::function<bool()>& predicate,
               const std::function<std::string()>& describe = {},
               std::chrono::milliseconds deadline = kDeadline);

/// The same for those who cannot go on without: throws std::runtime_error.
void require(Display& display, const std::string& what, const std::function<bool()>& predicate,
             const std::function<std::string()>& describe = {},
             std::chrono::milliseconds deadline = kDeadline);

/// Waits until what `read` gives has been the same for `time`, at most until the deadline.
template <typename Read> void awaitStill(Display& display, const std::string& what,
                                         const Read& read, std::chrono::milliseconds time) {
    using Clock = std::chrono::steady_clock;
    auto seen = read();
    auto since = Clock::now();
    waitUntil(display, what + " at rest", [&] {
        if (auto now = read(); now != seen) {
            seen = std::move(now);
            since = Clock::now();
        }
        return Clock::now() - since > time;
    });
}

/// Waits until the program has written `part`; throws as well.
void awaitOutput(Display& display, const Process& program, const std::string& part);

} // namespace klova::rig
