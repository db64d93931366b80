// The application's shell: start-up, the status menu, quitting.
#pragma once

#include "app/TrayIcon.h"
#include "input/ApplicationDelegate.h"
#include "input/EventTapDispatcher.h"
#include "input/KeyInputController.h"
#include "platform/Desktop.h"
#include "settings/DataStorageManager.h"

#include <QAction>
#include <QMenu>
#include <memory>
#include <optional>

namespace klova {

class AppDelegate final : public ApplicationDelegate {
public:
    /// Both are borrowed and outlive this; `tray` is the desktop's status item.
    AppDelegate(Desktop& desktop, TrayIcon& tray);
    ~AppDelegate() override;
    AppDelegate(const AppDelegate&) = delete;
    AppDelegate& operator=(const AppDelegate&) = delete;

    /// Starts everything and runs the application; returns when it has been terminated. A refused
    /// event tap is a fatal error.
    void applicationDidFinishLaunching();

    void quitApplication() override;

    /// The answer to the menu's entry.
    void quitBtnClicked() { quitApplication(); }

    /// Shows the current activation keys in the titles of the menu's entries.
    void updateShortCutLabels();

private:
    void showStatusItem();
    void loadSettings();
    void seedSettings();
    void installEventTap();

    Desktop& desktop_;
    TrayIcon& tray_;
    QMenu menu_;
    QAction* quitMenuItem_; ///< the menu's own
    EventTapDispatcher dispatcher_;
    std::optional<KeyInputController> inputController_;
    std::optional<DataStorageManager> dataStorageManager_;
    std::unique_ptr<EventTapPort> eventTap_;
};

} // namespace klova
