// What a person does with Klova in a session, from the first login to the next one.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace klova::desktops {

struct SessionRecipe;

struct StepResult {
    std::string step;
    std::string fault; // empty for none
    std::string seen;  // what is worth knowing besides
};

/// Takes a picture of each step into the folder.
std::vector<StepResult> playSession(const SessionRecipe& recipe, const std::filesystem::path& klova,
                                    const std::filesystem::path& pictures);

} // namespace klova::desktops
