// Random secrets, and the one that every display of this process asks its clients for.
#pragma once

#include <filesystem>
#include <string>

namespace klova::rig {

/// 128 bits that nobody can guess, as 16 bytes. Throws std::system_error where there are none.
std::string randomBytes();

/// For a server's -auth and its clients' XAUTHORITY: without a key an X server takes every user of
/// the machine for a friend. The file is made by the first call, is gone with the process, and
/// holds the keys that the person has as well. From then on it is this process's XAUTHORITY, too.
const std::filesystem::path& displayKey();

} // namespace klova::rig
