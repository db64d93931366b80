#include "Starter.h"

#include "Listener.h"
#include "desktop/Files.h"
#include "desktop/Grabs.h"

#include <stdexcept>

namespace klova::bench {

using namespace std::chrono_literals;

void writeSettings(rig::Session& session) {
    rig::writeFile(session.config() / "klova" / "preferences.json",
                   R"({"isNotFirstTime": true, "activationKeys": [55, 59],
 "LoadsOnStartup": false, "maximizingEnabled": true, "centeringEnabled": true,
 "deminimizeButton": 8})");
}

Starter::Starter(rig::VirtualDesktop& desktop, std::filesystem::path klova)
    : desktop_(desktop), klova_(std::move(klova)) {
    writeSettings(desktop_.session());
}

double Starter::start() {
    constexpr std::uint32_t chord = XCB_MOD_MASK_4 | XCB_MOD_MASK_CONTROL;
    constexpr std::uint8_t last = 3; // the right button's grabs are placed after all others
    const auto begin = Clock::now();
    process_.emplace(desktop_.launch({klova_}));
    while (!rig::buttonReserved(desktop_.display(), last, chord)) {
        if (Clock::now() > begin + 10s)
            throw std::runtime_error("Klova does not start: " + process_->output());
        awaitReadable(desktop_.display(), Clock::now() + 200us);
    }
    return microseconds(Clock::now() - begin) / 1000;
}

} // namespace klova::bench
