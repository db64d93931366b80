#include "platform/x11/MonitorList.h"

#include <algorithm>
#include <utility>

namespace klova::x11 {

MonitorId MonitorList::add(std::uint64_t mask, EventMonitors::Handler handler) {
    const MonitorId id{++lastId_};
    monitors_.emplace(id, std::make_shared<const Monitor>(Monitor{mask, std::move(handler)}));
    return id;
}

bool MonitorList::watches(EventType type) const {
    return std::any_of(monitors_.begin(), monitors_.end(), [type](const auto& entry) {
        return (entry.second->mask & maskOf(type)) != 0;
    });
}

void MonitorList::deliver(const Event& event) {
    const auto installed = monitors_;
    for (const auto& [id, monitor] : installed)
        if ((monitor->mask & maskOf(event.type)) != 0 && monitors_.contains(id))
            monitor->handler(event);
}

} // namespace klova::x11
