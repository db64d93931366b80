#include "platform/freedesktop/Folders.h"

#include <cerrno>
#include <cstdlib>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace klova {
namespace {

namespace fs = std::filesystem;

fs::path homeFolder() {
    if (const char* home = std::getenv("HOME"); home != nullptr && *home != '\0')
        return home;
    const passwd* entry = ::getpwuid(::getuid());
    return entry != nullptr ? entry->pw_dir : "/";
}

} // namespace

fs::path configurationHome() {
    const char* configured = std::getenv("XDG_CONFIG_HOME");
    if (configured != nullptr && fs::path(configured).is_absolute())
        return configured;
    return homeFolder() / ".config";
}

std::error_code makeFolders(const fs::path& folder) {
    std::error_code error;
    if (folder.empty() || fs::is_directory(folder, error))
        return {};
    if (error = makeFolders(folder.parent_path()); error)
        return error;
    if (::mkdir(folder.c_str(), S_IRWXU) == 0 || errno == EEXIST)
        return {};
    return {errno, std::generic_category()};
}

} // namespace klova
