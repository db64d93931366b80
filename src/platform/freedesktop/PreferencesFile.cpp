#include "platform/freedesktop/PreferencesFile.h"

#include "platform/UniqueDescriptor.h"
#include "platform/freedesktop/Folders.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace klova {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLargestFile = std::size_t{1} << 20;
constexpr int kMostLinks = 40;
constexpr int kMostKept = 1000;

std::error_code lastError() { return {errno, std::generic_category()}; }

fs::path followLinks(const fs::path& start) {
    fs::path path = start;
    for (int links = 0; links < kMostLinks; ++links) {
        std::error_code error;
        const fs::path target = fs::read_symlink(path, error);
        if (error)
            return path;
        path = path.parent_path() / target;
    }
    return start;
}

bool sameFile(const struct stat& one, const struct stat& other) {
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

/// Opens the one draft beside the file and locks it, so that what a killed save left is used again
/// and two programs never write the same draft. Whoever waited for the lock may then hold a draft
/// that has meanwhile become the file: it starts over.
std::error_code openDraft(const fs::path& path, UniqueDescriptor& draft) {
    while (true) {
        draft = UniqueDescriptor(
            ::open(path.c_str(), O_WRONLY | O_CREAT | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR));
        if (!draft && errno == EACCES && ::unlink(path.c_str()) == 0)
            continue; // left by a killed save of a read-only file
        struct stat opened {};
        struct stat named {};
        if (!draft || ::flock(draft.get(), LOCK_EX) != 0 || ::fstat(draft.get(), &opened) != 0)
            return lastError();
        if (::lstat(path.c_str(), &named) == 0 && sameFile(opened, named))
            return {};
    }
}

std::error_code writeAll(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = ::write(descriptor, text.data(), text.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return lastError();
        text.remove_prefix(static_cast<std::size_t>(written));
    }
    return {};
}

std::error_code fillDraft(int draft, std::string_view text, mode_t permissions) {
    if (::ftruncate(draft, 0) != 0 || ::fchmod(draft, permissions) != 0)
        return lastError();
    if (const auto error = writeAll(draft, text))
        return error;
    return ::fsync(draft) == 0 ? std::error_code() : lastError();
}

mode_t permissionsFor(const fs::path& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0)
        return S_IRUSR | S_IWUSR;
    return status.st_mode & (S_IRWXU | S_IRWXG | S_IRWXO);
}

} // namespace

fs::path configurationFolder() { return configurationHome() / "klova"; }

PreferencesFile::PreferencesFile(const fs::path& path) : path_(followLinks(path)) {}

std::error_code PreferencesFile::read(std::string& text) const {
    const UniqueDescriptor file(::open(path_.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    struct stat status {};
    if (!file || ::fstat(file.get(), &status) != 0)
        return lastError();
    if (S_ISDIR(status.st_mode))
        return std::make_error_code(std::errc::is_a_directory);
    if (!S_ISREG(status.st_mode))
        return std::make_error_code(std::errc::not_supported);

    std::array<char, 4096> block{};
    text.clear();
    while (text.size() <= kLargestFile) {
        const ssize_t count = ::read(file.get(), block.data(), block.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return lastError();
        if (count == 0)
            return {};
        text.append(block.data(), static_cast<std::size_t>(count));
    }
    return std::make_error_code(std::errc::file_too_large);
}

std::error_code PreferencesFile::setAside(fs::path& kept) const {
    for (int number = 0; number < kMostKept; ++number) {
        kept = path_.native() + ".broken" + (number == 0 ? "" : "." + std::to_string(number));
        std::error_code error;
        if (fs::exists(fs::symlink_status(kept, error)))
            continue;
        return ::rename(path_.c_str(), kept.c_str()) == 0 ? std::error_code() : lastError();
    }
    return std::make_error_code(std::errc::file_exists);
}

std::error_code PreferencesFile::replace(std::string_view text) const {
    const fs::path folder = path_.parent_path();
    const fs::path draftPath = path_.native() + ".new";
    UniqueDescriptor draft;
    if (const auto error = makeFolders(folder))
        return error;
    if (const auto error = openDraft(draftPath, draft))
        return error;
    auto error = fillDraft(draft.get(), text, permissionsFor(path_));
    if (!error && ::rename(draftPath.c_str(), path_.c_str()) != 0)
        error = lastError();
    if (error) {
        ::unlink(draftPath.c_str());
        return error;
    }
    const UniqueDescriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    ::fsync(opened.get());
    return {};
}

} // namespace klova
