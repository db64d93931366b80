// A desktop with Klova on it, served to browsers on this machine that know its secret.
#pragma once

#include "Caption.h"
#include "QuitRequest.h"
#include "Stage.h"

#include <cstdint>
#include <filesystem>
#include <string>

namespace klova::demo {

/// Only the page's own files are had without the secret: it is part of the address, in which
/// browsers keep it to themselves until they open the stream, and of a file of the session. The
/// desktop's pictures and input are behind a socket in the session's directory, for this user only.
class View {
public:
    /// Starts all of it, `binary` being Klova. Throws std::runtime_error where something does not
    /// come up, here as in `serve`.
    explicit View(std::filesystem::path binary);

    /// What to open in a browser. The port is on 127.0.0.1 only.
    std::string address() const;
    std::uint16_t port() const { return port_; }

    /// Returns when the process is asked to quit. Klova starts again whenever it is quit.
    void serve();

private:
    rig::Process startScreen();
    rig::Process startPage();
    rig::Process startKlova();

    QuitRequest quit_;
    std::filesystem::path binary_;
    Stage stage_;
    Caption caption_;
    std::string secret_;
    std::uint16_t port_ = 0;
    rig::Process screen_;
    rig::Process page_;
    rig::Process klova_;
};

} // namespace klova::demo
