#include "platform/freedesktop/AutostartItems.h"

#include "platform/UniqueDescriptor.h"
#include "platform/freedesktop/AutostartEntry.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <tuple>
#include <unistd.h>
#include <utility>

namespace klova {
namespace {

namespace fs = std::filesystem;

constexpr int kMostNames = 1000;

struct Item final : LSSharedFileListItem {
    fs::path file;
    AutostartEntry entry;
    std::int64_t seconds = 0; ///< of its birth, or of its last change where that is not known
    std::uint32_t nanoseconds = 0;

    /// Files of one tick of the clock: "klova" before "klova-2" before "klova-10".
    auto age() const { return std::tuple(seconds, nanoseconds, file.native().size(), file); }
};

std::shared_ptr<Item> itemAt(const fs::path& file) {
    struct statx status {};
    if (file.extension() != ".desktop" ||
        ::statx(AT_FDCWD, file.c_str(), AT_SYMLINK_NOFOLLOW, STATX_BASIC_STATS | STATX_BTIME,
                &status) != 0 ||
        !S_ISREG(status.stx_mode))
        return nullptr;
    const bool born = (status.stx_mask & STATX_BTIME) != 0;
    auto item = std::make_shared<Item>();
    item->file = file;
    item->entry = AutostartEntry::read(file);
    item->seconds = born ? status.stx_btime.tv_sec : status.stx_mtime.tv_sec;
    item->nanoseconds = born ? status.stx_btime.tv_nsec : status.stx_mtime.tv_nsec;
    return item;
}

/// A file that sessions do not look at, gone with its owner.
class Draft {
public:
    Draft(const fs::path& folder, std::string_view text) : path_(folder / ".klova-XXXXXX") {
        const UniqueDescriptor file(::mkostemp(path_.data(), O_CLOEXEC));
        if (!file)
            return;
        made_ = true;
        const auto size = static_cast<ssize_t>(text.size());
        whole_ = ::write(file.get(), text.data(), text.size()) == size && ::fsync(file.get()) == 0;
    }
    ~Draft() {
        if (made_)
            ::unlink(path_.c_str());
    }
    Draft(const Draft&) = delete;
    Draft& operator=(const Draft&) = delete;

    /// Where the draft is whole and the name is free, the file gets that name too; otherwise
    /// returns what is in the way.
    std::error_code publish(const fs::path& name) const {
        if (!whole_)
            return std::make_error_code(std::errc::io_error);
        return ::link(path_.c_str(), name.c_str()) == 0
                   ? std::error_code()
                   : std::error_code(errno, std::generic_category());
    }

private:
    std::string path_;
    bool made_ = false;
    bool whole_ = false;
};

} // namespace

AutostartItems::AutostartItems(FileReference program, fs::path folder)
    : program_(std::move(program)), folder_(std::move(folder)) {}

LSSharedFileListRef AutostartItems::LSSharedFileListCreate() {
    return std::make_shared<LSSharedFileList>();
}

std::vector<LSSharedFileListItemRef>
AutostartItems::LSSharedFileListCopySnapshot(LSSharedFileList&) {
    std::vector<std::shared_ptr<Item>> items;
    std::error_code error;
    fs::directory_iterator file(folder_, error);
    for (; !error && file != fs::directory_iterator(); file.increment(error))
        if (auto item = itemAt(file->path()); item && !item->entry.hidden)
            items.push_back(std::move(item));
    std::ranges::sort(items, {}, [](const auto& item) { return item->age(); });
    return {items.begin(), items.end()};
}

std::optional<FileReference>
AutostartItems::LSSharedFileListItemResolve(const LSSharedFileListItem& item) {
    return dynamic_cast<const Item&>(item).entry.resolve();
}

LSSharedFileListItemRef
AutostartItems::LSSharedFileListInsertItemURL(LSSharedFileList&, const FileReference& program) {
    const auto text = autostartEntryFor(program.path);
    if (text.empty() || makeFolders(folder_))
        return nullptr;
    const Draft draft(folder_, text);
    for (int number = 1; number <= kMostNames; ++number) {
        const auto suffix = number == 1 ? "" : "-" + std::to_string(number);
        const auto name = folder_ / ("klova" + suffix + ".desktop");
        const auto error = draft.publish(name);
        if (!error)
            return itemAt(name);
        if (error != std::errc::file_exists)
            return nullptr;
    }
    return nullptr;
}

void AutostartItems::LSSharedFileListItemRemove(LSSharedFileList&,
                                                const LSSharedFileListItem& item) {
    ::unlink(dynamic_cast<const Item&>(item).file.c_str());
}

} // namespace klova
