#include "desktop/SmallDisk.h"

#include "desktop/Files.h"

#include <cerrno>
#include <fcntl.h>
#include <sched.h>
#include <string>
#include <sys/mount.h>
#include <system_error>
#include <unistd.h>

namespace klova::rig {
namespace {

[[noreturn]] void fail(const std::string& what) {
    throw std::system_error(errno, std::generic_category(), what);
}

/// Mounts that nobody else sees, with the rights of this user.
void makeOwnMounts() {
    const auto user = std::to_string(::getuid()), group = std::to_string(::getgid());
    const bool isRoot = ::getuid() == 0;
    if (::unshare(isRoot ? CLONE_NEWNS : CLONE_NEWNS | CLONE_NEWUSER) != 0)
        fail("no mounts of one's own");
    if (!isRoot) {
        writeFile("/proc/self/setgroups", "deny");
        writeFile("/proc/self/uid_map", user + " " + user + " 1");
        writeFile("/proc/self/gid_map", group + " " + group + " 1");
    }
    if (::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
        fail("mounts that others see");
}

} // namespace

SmallDisk::SmallDisk(const std::filesystem::path& folder, std::size_t size) : folder_(folder) {
    std::filesystem::create_directories(folder);
    makeOwnMounts();
    const auto options = "size=" + std::to_string(size);
    if (::mount("none", folder.c_str(), "tmpfs", 0, options.c_str()) != 0)
        fail("a small disk");
}

SmallDisk::~SmallDisk() { ::umount2(folder_.c_str(), MNT_DETACH); }

void SmallDisk::setFull(bool full) const {
    const auto filling = folder_ / "filling";
    std::filesystem::remove(filling);
    if (!full)
        return;
    const int file = ::open(filling.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    const std::string block(4096, 'x');
    while (::write(file, block.data(), block.size()) > 0) {
    }
    ::close(file);
}

void SmallDisk::setReadOnly(bool readOnly) const {
    if (::mount("none", folder_.c_str(), nullptr, MS_REMOUNT | (readOnly ? MS_RDONLY : 0),
                nullptr) != 0)
        fail("remounting");
}

} // namespace klova::rig
