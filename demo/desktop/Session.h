// A private login session on a display: directories, settings and message bus of its own.
#pragma once

#include "desktop/Files.h"
#include "desktop/Process.h"

#include <filesystem>
#include <string>
#include <vector>

namespace klova::rig {

class Session {
public:
    /// Starts the session's bus. Throws std::runtime_error where it does not come up.
    explicit Session(const std::string& display);

    /// What every program of this session is started with.
    const Environment& environment() const { return environment_; }
    void setVariable(const std::string& name, const std::string& value);

    const std::filesystem::path& directory() const { return directory_.path(); }
    std::filesystem::path home() const { return directory() / "home"; }
    std::filesystem::path config() const { return home() / ".config"; }
    /// Klova's settings file.
    std::filesystem::path preferences() const { return config() / "klova" / "preferences.json"; }

    /// The clock of programs that start from now on, and of those that were started since the first
    /// call: the real one and this much, as in "-400d". Time that only grows is not touched.
    void setClock(const std::string& offset);

    /// Sends `number` to the session's bus.
    void signalBus(int number) const { bus_.signal(number); }

    /// Starts a program; its output goes to a file of the session.
    Process launch(const std::vector<std::string>& command);

private:
    Process startBus();

    TemporaryDirectory directory_;
    Environment environment_;
    int launched_ = 0;
    Process bus_;
};

} // namespace klova::rig
