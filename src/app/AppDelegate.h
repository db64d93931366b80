// The application's shell: start-up, the status menu, quitting.
#pragma once

#include "app/StatusMenu.h"
#include "app/TrayIcon.h"
#include "input/EventTapDispatcher.h"
#include "input/KeyInputController.h"
#include "platform/Desktop.h"
#include "settings/DataStorageManager.h"
#include "ui/AboutDocument.h"
#include "ui/PanelDelegate.h"
#include "ui/PreferencesDocument.h"
#include "ui/WelcomeDocument.h"

#include <memory>
#include <optional>

namespace klova {

class AppDelegate final : public PanelDelegate {
public:
    /// Both are borrowed and outlive this; `tray` is the desktop's status item.
    AppDelegate(Desktop& desktop, TrayIcon& tray);
    ~AppDelegate() override;
    AppDelegate(const AppDelegate&) = delete;
    AppDelegate& operator=(const AppDelegate&) = delete;

    /// To be connected before the start.
    StatusMenu statusMenu;

    /// Starts everything and runs the application; returns when it has been terminated. A status
    /// menu that is not connected and a refused event tap are fatal errors.
    void applicationDidFinishLaunching();

    void quitApplication() override;

    /// The answer to the menu's entry.
    void quitBtnClicked() { quitApplication(); }

    /// Tells the desktop too, which holds other keys back from now on.
    void updateActivationKeyLabel() override;
    void updateShortCutLabels() override { statusMenu.updateShortCutLabels(); }
    void toggleShowMenuItems(bool enabled) override { statusMenu.toggleShowMenuItems(enabled); }

    // Each of these brings the open panel to the front instead where one is open.
    void openPreferences() override;
    void openAbout();
    void openWelcomeWindowAndDoc();

    void closeWelcome() override;
    void closeAbout() override;

private:
    void showStatusItem();
    void loadSettings();
    void seedSettings();
    void installEventTap();
    template <class Document> void openPanel(std::unique_ptr<Document>& document);
    void closePanel(PanelDocument* document);

    Desktop& desktop_;
    TrayIcon& tray_;
    EventTapDispatcher dispatcher_;
    std::optional<KeyInputController> inputController_;
    std::optional<DataStorageManager> dataStorageManager_;
    std::unique_ptr<EventTapPort> eventTap_;

    // Each stays, with its window closed, until a new one takes its place.
    std::unique_ptr<PreferencesDocument> preferencesDocument_;
    std::unique_ptr<AboutDocument> aboutDocument_;
    std::unique_ptr<WelcomeDocument> welcomeDocument_;
    PanelDocument* lastOpened_ = nullptr; ///< one of them
};

} // namespace klova
