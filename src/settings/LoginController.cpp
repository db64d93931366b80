#include "settings/LoginController.h"

#include "platform/FatalError.h"

#include <mutex>

namespace klova {
namespace {

std::mutex sharedListMutex;
LSSharedFileListRef sharedList;

LoginItems& items() {
    if (loginItems == nullptr)
        fatalError("the login items are missing");
    return *loginItems;
}

bool startsThisProgram(const LSSharedFileListItem& item) {
    const auto program = items().LSSharedFileListItemResolve(item);
    return program && program->isEqual(items().mainBundle());
}

void removeEveryItem(LSSharedFileList& list) {
    for (const auto& item : items().LSSharedFileListCopySnapshot(list))
        if (startsThisProgram(*item))
            items().LSSharedFileListItemRemove(list, *item);
}

} // namespace

LSSharedFileListRef LoginController::sharedFileList() {
    const std::lock_guard lock(sharedListMutex);
    if (!sharedList)
        sharedList = items().LSSharedFileListCreate();
    return sharedList;
}

void LoginController::setOpensAtLogin(bool opensAtLogin) {
    const auto list = sharedFileList();
    if (opensAtLogin)
        items().LSSharedFileListInsertItemURL(*list, items().mainBundle());
    else
        removeEveryItem(*list);
}

bool LoginController::opensAtLogin() {
    const auto list = sharedFileList();
    for (const auto& item : items().LSSharedFileListCopySnapshot(*list))
        if (startsThisProgram(*item))
            return true;
    return false;
}

void LoginController::resetSharedFileList() {
    const std::lock_guard lock(sharedListMutex);
    sharedList.reset();
}

} // namespace klova
