// When something is due even if no event comes.
#pragma once

#include <algorithm>
#include <chrono>
#include <optional>

namespace klova {

/// Absent: never.
using Deadline = std::optional<std::chrono::steady_clock::time_point>;

inline Deadline earlier(const Deadline& one, const Deadline& other) {
    return one && other ? std::min(*one, *other) : one ? one : other;
}

} // namespace klova
