// A desktop with Klova on it, on which one stream after the other is played and judged.
#pragma once

#include "Player.h"
#include "Usage.h"
#include "desktop/ManagerBarrier.h"

#include <filesystem>
#include <optional>
#include <string>

namespace klova::stress {

class Trial {
public:
    Trial(const std::string& manager, std::filesystem::path klova);

    /// What went wrong, in words; empty where nothing did.
    std::string play(Stream stream);

    /// Ends Klova as a person does, and starts it again; what went wrong.
    std::string restart();

    /// Of Klova, on the keyboard map of the start.
    Usage usage();

private:
    void start();
    void prepare(const Stream& stream);
    void setLayout(int layout);
    void focusListener();
    std::string playSteps(Stream& stream);
    std::vector<Heard> hearOut();

    void awaitRelease();
    std::string aftermath();
    std::string heldDevices();
    std::string heldGrabs();
    std::string settingsFault();
    std::string snapFault();

    rig::VirtualDesktop desktop_;
    rig::ManagerBarrier barrier_;
    std::filesystem::path binary_;
    Listener listener_;
    std::optional<rig::Klova> klova_;
    std::optional<Player> player_;
    std::string settings_;
    int layout_ = 0;
};

} // namespace klova::stress
