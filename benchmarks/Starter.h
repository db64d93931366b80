// Klova on a desktop where it can be started again and again.
#pragma once

#include "desktop/VirtualDesktop.h"

#include <filesystem>
#include <optional>

namespace klova::bench {

/// Settings of a person who has seen the tour.
void writeSettings(rig::Session& session);

class Starter {
public:
    Starter(rig::VirtualDesktop& desktop, std::filesystem::path klova);

    /// Starts Klova and returns the milliseconds until the last of its grabs is in place, from
    /// which on a chord works. Throws std::runtime_error where that takes ten seconds.
    double start();
    rig::Process& process() { return *process_; }
    void end() { process_.reset(); }

private:
    rig::VirtualDesktop& desktop_;
    std::filesystem::path klova_;
    std::optional<rig::Process> process_;
};

} // namespace klova::bench
