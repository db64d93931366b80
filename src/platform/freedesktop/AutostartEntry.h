// What one file of the autostart folder says, in the Desktop Entry format of freedesktop.org.
#pragma once

#include "platform/LoginItems.h"

#include <filesystem>
#include <optional>
#include <string>

namespace klova {

struct AutostartEntry {
    bool hidden = false; ///< counts as if it were not there
    std::string program; ///< as the command has it: a path or a name; empty where there is none

    /// An entry that cannot be read, or is none of an application, has no program.
    static AutostartEntry read(const std::filesystem::path& file);

    /// The file that the entry starts; absent where none is found.
    std::optional<FileReference> resolve() const;
};

/// The text of an entry that starts Klova, whose program is at this path; empty where no entry
/// can say that.
std::string autostartEntryFor(const std::string& program);

} // namespace klova
