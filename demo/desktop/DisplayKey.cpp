#include "DisplayKey.h"

#include <cerrno>
#include <cstdlib>
#include <string_view>
#include <sys/random.h>
#include <system_error>

namespace klova::demo {
namespace {

/// As the file has it: the length in two bytes, the higher one first.
std::string counted(std::string_view text) {
    return std::string{static_cast<char>(text.size() >> 8), static_cast<char>(text.size() & 0xFF)}
        .append(text);
}

constexpr std::string_view kAnyAddress = "\xFF\xFF"; // FamilyWild

} // namespace

std::string randomBytes() {
    std::string bytes(16, '\0');
    if (::getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size()))
        throw std::system_error(errno, std::generic_category(), "no random numbers");
    return bytes;
}

DisplayKey::DisplayKey() {
    rig::writeFile(file(), std::string(kAnyAddress) + counted("") + counted("") +
                               counted("MIT-MAGIC-COOKIE-1") + counted(randomBytes()));
    ::setenv("XAUTHORITY", file().c_str(), 1);
}

} // namespace klova::demo
