// The person's wish that the demo ends, which leaves it the time to clear up.
#pragma once

namespace klova::demo {

/// SIGINT, SIGTERM and SIGHUP, which end nothing from here on but are noted.
class QuitRequest {
public:
    QuitRequest();
    bool made() const;

    /// Throws std::runtime_error once it is made. To be called between two steps.
    void obey() const;
};

} // namespace klova::demo
