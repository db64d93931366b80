// Directories that vanish with their owner, and whole files read and written.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace klova::rig {

/// A new directory under the system's temporary one, for this user only; removed with all it
/// holds on destruction. Throws std::system_error where it cannot be made.
class TemporaryDirectory {
public:
    TemporaryDirectory();
    ~TemporaryDirectory();
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

/// Writes `text`, making the folders above the file. Throws where that fails.
void writeFile(const std::filesystem::path& file, std::string_view text);

/// What the file holds, empty where it cannot be read.
std::string readFile(const std::filesystem::path& file);

} // namespace klova::rig
