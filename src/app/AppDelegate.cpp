#include "app/AppDelegate.h"

#include "input/ActivationKeys.h"
#include "input/KeyList.h"
#include "input/ShellState.h"
#include "platform/Diagnostics.h"
#include "platform/FatalError.h"
#include "settings/LoginController.h"

namespace klova {
namespace {

// How the tap is asked for: for the login session, ahead of other taps, able to swallow.
constexpr std::uint32_t kSessionEventTap = 1;
constexpr std::uint32_t kHeadInsertEventTap = 0;
constexpr std::uint32_t kDefaultTap = 0;
constexpr std::uint64_t kTapMask =
    maskOf(EventType::null) | maskOf(EventType::leftMouseDown) | maskOf(EventType::leftMouseUp) |
    maskOf(EventType::rightMouseDown) | maskOf(EventType::rightMouseUp) |
    maskOf(EventType::keyDown) | maskOf(EventType::keyUp);

} // namespace

AppDelegate::AppDelegate(Desktop& desktop, TrayIcon& tray)
    : desktop_(desktop), tray_(tray), dispatcher_(desktop) {
    statusItem = &desktop.statusItem;
    loginItems = &desktop.loginItems;
    applicationDelegate = this;
}

AppDelegate::~AppDelegate() {
    eventTap = nullptr;
    dataStorageManager = nullptr;
    sharedSwipeManager = nullptr;
    applicationDelegate = nullptr;
    loginItems = nullptr;
    statusItem = nullptr;
}

void AppDelegate::applicationDidFinishLaunching() {
    if (statusMenu.menu == nullptr)
        fatalError("the status menu is missing");
    inputController_.emplace(desktop_);
    sharedSwipeManager = inputController_->swipeManager();
    dataStorageManager = &dataStorageManager_.emplace(desktop_);
    showStatusItem();
    if (dataStorageManager->isFirstTimeAndManage())
        seedSettings();
    else
        loadSettings();
    updateActivationKeyLabel();
    updateShortCutLabels();
    installEventTap();
    desktop_.application.run();
}

void AppDelegate::showStatusItem() {
    StatusButton* button = desktop_.statusItem.button();
    if (button == nullptr)
        return;
    button->setImage("Menulet_deactivated");
    tray_.setMenu(*statusMenu.menu);
}

void AppDelegate::loadSettings() {
    dataStorageManager->writeToGlobalActivationKeys();
    dataStorageManager->writeToMaxCenterSettings();
    dataStorageManager->writeToDeminimizeButton();
    diagnosticLine(description(activationKeys));
}

void AppDelegate::seedSettings() {
    activationKeys = {key::command, key::control};
    dataStorageManager->saveKeys();
    dataStorageManager->saveMaxCenterSettings();
    dataStorageManager->saveDeminimizeButton();
    dataStorageManager->saveStartupSettings(false);
    diagnosticLine("Opened for First Time!");
    openWelcomeWindowAndDoc();
}

void AppDelegate::installEventTap() {
    eventTap_ = desktop_.taps.CGEventTapCreate(kSessionEventTap, kHeadInsertEventTap, kDefaultTap,
                                               kTapMask, dispatcher_);
    eventTap = eventTap_.get();
    activationComplete = false;
    if (eventTap == nullptr)
        fatalError("the desktop refused the event tap");
    desktop_.taps.CGEventTapEnable(*eventTap, true);
}

void AppDelegate::updateActivationKeyLabel() {
    if (eventTap != nullptr)
        desktop_.taps.activationKeysChanged(*eventTap);
    statusMenu.updateActivationKeyLabel();
}

void AppDelegate::openPreferences() { openPanel(preferencesDocument_); }
void AppDelegate::openAbout() { openPanel(aboutDocument_); }
void AppDelegate::openWelcomeWindowAndDoc() { openPanel(welcomeDocument_); }
void AppDelegate::closeWelcome() { closePanel(welcomeDocument_.get()); }
void AppDelegate::closeAbout() { closePanel(aboutDocument_.get()); }

template <class Document> void AppDelegate::openPanel(std::unique_ptr<Document>& document) {
    if (panelOpen) {
        lastOpened_->showWindows();
        return;
    }
    panelOpen = true;
    toggleShowMenuItems(false);
    document = std::make_unique<Document>();
    lastOpened_ = document.get();
    document->makeWindowControllers();
}

void AppDelegate::closePanel(PanelDocument* document) {
    if (document != nullptr)
        document->close(); // tells the menu
}

void AppDelegate::quitApplication() { desktop_.application.terminate(); }

} // namespace klova
