#include "desktop/VirtualDesktop.h"

#include "desktop/Monitors.h"

#include <utility>

namespace klova::rig {

VirtualDesktop::VirtualDesktop(const DesktopOptions& options)
    : server_(options.screen, options.server), display_(server_.display()),
      monitors_(options.twoMonitors ? splitMonitors(display_) : std::vector{server_.screen()}),
      session_(server_.display()) {
    if (options.prepare)
        options.prepare(session_, display_);
    if (!options.windowManager.empty())
        manager_.emplace(session_, display_, options.windowManager,
                         options.managersTray ? WindowManager::Start::withTray
                                              : WindowManager::Start::first);
}

void VirtualDesktop::replaceManager() {
    const std::string name = manager_->name();
    if (name == "fluxbox")
        manager_.reset(); // which gives way to a successor when it likes
    WindowManager successor(session_, display_, name, WindowManager::Start::replacing);
    manager_ = std::move(successor);
}

} // namespace klova::rig
