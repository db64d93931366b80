// Where the person's own files belong by the XDG Base Directory rules.
#pragma once

#include <filesystem>
#include <system_error>

namespace klova {

/// $XDG_CONFIG_HOME, or ~/.config where that is unset or relative.
std::filesystem::path configurationHome();

/// Makes the folder and those above it that are missing, for this user alone.
std::error_code makeFolders(const std::filesystem::path& folder);

} // namespace klova
