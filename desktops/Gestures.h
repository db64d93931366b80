// Every gesture as it is tried under a window manager, and what came of it.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace klova::desktops {

/// In the order of their notes. All but the first and the last are the manager's own way, which it
/// has shown without Klova as well.
enum class Outcome {
    works,
    worksInSteps,
    reachesBeneath,
    staysOnScreen,
    noMaximizing,
    staysMaximized,
    noMinimizing,
    fails,
};

/// What the table says of it; empty where there is nothing to say.
std::string_view note(Outcome outcome);

struct Finding {
    Outcome outcome = Outcome::works;
    std::string seen; // where it fails
};

struct Gesture {
    std::string name;
    /// On a desktop of its own under `manager`.
    Finding (*play)(const std::filesystem::path& klova, const std::string& manager);
};

const std::vector<Gesture>& gestures();

} // namespace klova::desktops
