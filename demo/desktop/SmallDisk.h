// A disk of its own under one folder, that can be full or read-only.
#pragma once

#include <cstddef>
#include <filesystem>

namespace klova::rig {

/// Only this process and those it starts from now on see it. They have to be of one thread now.
class SmallDisk {
public:
    /// Puts a disk with room for `size` bytes under the folder, which is made where it is missing.
    /// Throws std::system_error where the machine does not permit that.
    SmallDisk(const std::filesystem::path& folder, std::size_t size);
    ~SmallDisk();
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    /// Leaves no room, or all that there was.
    void setFull(bool full) const;
    void setReadOnly(bool readOnly) const;

private:
    std::filesystem::path folder_;
};

} // namespace klova::rig
