// Random secrets, and the one that a display asks its clients for.
#pragma once

#include "desktop/Files.h"

#include <filesystem>
#include <string>

namespace klova::demo {

/// 128 bits that nobody can guess, as 16 bytes. Throws std::system_error where there are none.
std::string randomBytes();

/// Without a key an X server takes every user of the machine for a friend. While one lives this
/// process uses it for each display that it connects to.
class DisplayKey {
public:
    DisplayKey();

    /// For a server's -auth and its clients' XAUTHORITY.
    std::filesystem::path file() const { return directory_.path() / "key"; }

private:
    rig::TemporaryDirectory directory_;
};

} // namespace klova::demo
