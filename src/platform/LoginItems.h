// What the desktop starts when the person logs in: one ordered list of each person's own.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace klova {

/// A program's file: where it is, and which file is there.
struct FileReference {
    struct Identity {
        std::uint64_t device = 0;
        std::uint64_t inode = 0;
        bool operator==(const Identity&) const = default;
    };

    std::string path; ///< absolute
    Identity identity;

    /// By either: a moved file keeps its identity, and an upgrade puts another one in its place.
    bool isEqual(const FileReference& other) const {
        return path == other.path || identity == other.identity;
    }
};

/// The list, and one item of a snapshot. Opaque; the platform derives from them.
class LSSharedFileList {
public:
    virtual ~LSSharedFileList() = default;
};
using LSSharedFileListRef = std::shared_ptr<LSSharedFileList>;

class LSSharedFileListItem {
public:
    virtual ~LSSharedFileListItem() = default;
};
using LSSharedFileListItemRef = std::shared_ptr<const LSSharedFileListItem>;

class LoginItems {
public:
    virtual ~LoginItems() = default;

    /// A handle to the list of login items. Never null; that the list is out of reach shows at
    /// each operation.
    virtual LSSharedFileListRef LSSharedFileListCreate() = 0;

    /// The items as they are now, oldest first; empty where the list cannot be read.
    virtual std::vector<LSSharedFileListItemRef>
    LSSharedFileListCopySnapshot(LSSharedFileList& list) = 0;

    /// The program that the item starts; absent where it cannot be told or no longer exists.
    virtual std::optional<FileReference>
    LSSharedFileListItemResolve(const LSSharedFileListItem& item) = 0;

    /// Adds an item that starts `program`, at the end and without looking for others like it.
    /// Null, and nothing added, where that fails.
    virtual LSSharedFileListItemRef LSSharedFileListInsertItemURL(LSSharedFileList& list,
                                                                  const FileReference& program) = 0;

    /// Does nothing where it fails.
    virtual void LSSharedFileListItemRemove(LSSharedFileList& list,
                                            const LSSharedFileListItem& item) = 0;

    /// The program that is running, as it was when it started.
    virtual FileReference mainBundle() = 0;
};

} // namespace klova
