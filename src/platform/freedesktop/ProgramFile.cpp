#include "platform/freedesktop/ProgramFile.h"

#include "platform/freedesktop/UniqueG.h"

#include <string_view>
#include <sys/stat.h>

namespace klova {
namespace {

namespace fs = std::filesystem;

constexpr const char* kRunningFile = "/proc/self/exe";

FileReference::Identity identityOf(const struct stat& status) {
    return {status.st_dev, status.st_ino};
}

/// An upgrade since the start shows as a word behind the name.
fs::path ownName() {
    constexpr std::string_view removed = " (deleted)";
    std::error_code error;
    std::string name = fs::read_symlink(kRunningFile, error).native();
    if (name.ends_with(removed) && !fs::exists(name, error))
        name.resize(name.size() - removed.size());
    return name;
}

fs::path pathOf(const std::string& invokedAs) {
    const auto found = own(g_find_program_in_path(invokedAs.c_str())); // PATH may be relative too
    std::error_code error;
    return fs::absolute(found ? found.get() : "", error).lexically_normal();
}

} // namespace

std::optional<FileReference> fileAt(const fs::path& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    return FileReference{path.native(), identityOf(status)};
}

FileReference runningProgram(const std::string& invokedAs) {
    const auto running = fileAt(kRunningFile).value_or(FileReference{});
    const auto invoked = fileAt(pathOf(invokedAs));
    if (invoked && invoked->identity == running.identity)
        return *invoked;
    return {ownName().native(), running.identity};
}

} // namespace klova
