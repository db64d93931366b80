// Counting what a process asks of the X server, by the server's own record of it.
#pragma once

#include "desktop/Display.h"

#include <cstdint>
#include <string>
#include <sys/types.h>
#include <thread>
#include <xcb/record.h>

namespace klova::bench {

class RequestCount {
public:
    /// Counts from now on. Throws std::runtime_error where the process has no connection to this
    /// server.
    RequestCount(const std::string& display, pid_t process);
    ~RequestCount();
    RequestCount(const RequestCount&) = delete;
    RequestCount& operator=(const RequestCount&) = delete;

    /// Of all its connections, up to the moment of asking.
    std::uint64_t stop();

private:
    rig::Display control_;
    rig::Display data_;
    xcb_record_context_t context_;
    std::uint64_t requests_ = 0;
    std::jthread reader_;
};

} // namespace klova::bench
