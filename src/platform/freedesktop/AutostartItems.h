// The login items as entries of the person's autostart folder.
#pragma once

#include "platform/LoginItems.h"
#include "platform/freedesktop/Folders.h"

#include <filesystem>

namespace klova {

/// An item is a regular file whose name ends in ".desktop". Symbolic links belong to whoever set
/// them, and hidden entries count as deleted: both are in no list. Failures are silent and leave
/// the folder as it was.
class AutostartItems final : public LoginItems {
public:
    /// `program` is the running one. The folder need not exist.
    explicit AutostartItems(FileReference program,
                            std::filesystem::path folder = configurationHome() / "autostart");

    LSSharedFileListRef LSSharedFileListCreate() override;
    std::vector<LSSharedFileListItemRef>
    LSSharedFileListCopySnapshot(LSSharedFileList& list) override;
    std::optional<FileReference>
    LSSharedFileListItemResolve(const LSSharedFileListItem& item) override;

    /// The new file's name is "klova.desktop", or the first of "klova-2.desktop" and so on that is
    /// free. It appears as a whole.
    LSSharedFileListItemRef LSSharedFileListInsertItemURL(LSSharedFileList& list,
                                                          const FileReference& program) override;
    void LSSharedFileListItemRemove(LSSharedFileList& list,
                                    const LSSharedFileListItem& item) override;
    FileReference mainBundle() override { return program_; }

private:
    FileReference program_;
    std::filesystem::path folder_;
};

} // namespace klova
