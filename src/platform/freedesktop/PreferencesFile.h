// The preferences file as a whole: read, set aside when broken, replaced atomically.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

namespace klova {

/// The folder of Klova's settings.
std::filesystem::path configurationFolder();

class PreferencesFile {
public:
    /// A symbolic link stands for the file that it names, also when there is none yet.
    explicit PreferencesFile(const std::filesystem::path& path);

    const std::filesystem::path& path() const { return path_; }

    /// Reads the whole file. Fails with ENOENT where there is none; anything but a regular file of
    /// at most a megabyte is refused.
    std::error_code read(std::string& text) const;

    /// Gives what is in the file's place a free name beside it, which is stored in `kept`.
    std::error_code setAside(std::filesystem::path& kept) const;

    /// Replaces the file, so that a kill at any moment leaves the old or the new one whole. The old
    /// one's permissions are kept; a new one, and every new folder above it, is the user's alone.
    std::error_code replace(std::string_view text) const;

private:
    std::filesystem::path path_;
};

} // namespace klova
