// The installed global monitors and the delivery of events to them.
#pragma once

#include "platform/EventMonitors.h"

#include <map>
#include <memory>

namespace klova::x11 {

class MonitorList {
public:
    MonitorId add(std::uint64_t mask, EventMonitors::Handler handler);
    void remove(MonitorId monitor) { monitors_.erase(monitor); }

    /// Whether any monitor watches events of that type.
    bool watches(EventType type) const;

    /// Calls every monitor that was installed when the event came and is not removed meanwhile.
    void deliver(const Event& event);

private:
    struct Monitor {
        std::uint64_t mask = 0;
        EventMonitors::Handler handler;
    };
    /// Shared, so that a handler which removes its own monitor is not destroyed while it runs.
    std::map<MonitorId, std::shared_ptr<const Monitor>> monitors_;
    std::uint64_t lastId_ = 0;
};

} // namespace klova::x11
