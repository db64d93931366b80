#include "desktop/DisplayKey.h"

#include "desktop/Files.h"

#include <cerrno>
#include <cstdlib>
#include <string_view>
#include <sys/random.h>
#include <system_error>

namespace klova::rig {
namespace {

/// As the file has it: the length in two bytes, the higher one first.
std::string counted(std::string_view text) {
    return std::string{static_cast<char>(text.size() >> 8), static_cast<char>(text.size() & 0xFF)}
        .append(text);
}

constexpr std::string_view kAnyAddress = "\xFF\xFF"; // FamilyWild

std::string personsKeys() {
    if (const char* file = std::getenv("XAUTHORITY"))
        return readFile(file);
    const char* home = std::getenv("HOME");
    return home != nullptr ? readFile(std::filesystem::path(home) / ".Xauthority") : "";
}

struct KeyFile {
    KeyFile() {
        // Of several that fit the first counts: the person's own display has its own.
        writeFile(path, personsKeys() + std::string(kAnyAddress) + counted("") + counted("") +
                            counted("MIT-MAGIC-COOKIE-1") + counted(randomBytes()));
        ::setenv("XAUTHORITY", path.c_str(), 1);
    }

    const TemporaryDirectory directory;
    const std::filesystem::path path = directory.path() / "key";
};

} // namespace

std::string randomBytes() {
    std::string bytes(16, '\0');
    if (::getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size()))
        throw std::system_error(errno, std::generic_category(), "no random numbers");
    return bytes;
}

const std::filesystem::path& displayKey() {
    static const KeyFile key;
    return key.path;
}

} // namespace klova::rig
