// Programs as files: the one at a path, and the one that is running.
#pragma once

#include "platform/LoginItems.h"

#include <filesystem>
#include <optional>
#include <string>

namespace klova {

/// Absent where the path, which is absolute, leads to no file.
std::optional<FileReference> fileAt(const std::filesystem::path& path);

/// The running program, which was started as `invokedAs` (the first word of its command). That
/// name is kept where it leads to the program, links and all, because it outlives what a link
/// points to; otherwise it is the file's own.
FileReference runningProgram(const std::string& invokedAs);

} // namespace klova
