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
    : desktop_(desktop), tray_(tray),
      quitMenuItem_(menu_.addAction("Quit KLOVA", [this] { quitBtnClicked(); })),
      dispatcher_(desktop) {
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
    inputController_.emplace(desktop_);
    sharedSwipeManager = inputController_->swipeManager();
    dataStorageManager = &dataStorageManager_.emplace(desktop_);
    showStatusItem();
    if (dataStorageManager->isFirstTimeAndManage())
        seedSettings();
    else
        loadSettings();
    updateShortCutLabels();
    installEventTap();
    desktop_.application.run();
}

void AppDelegate::showStatusItem() {
    StatusButton* button = desktop_.statusItem.button();
    if (button == nullptr)
        return;
    button->setImage("Menulet_deactivated");
    tray_.setMenu(menu_);
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
}

void AppDelegate::updateShortCutLabels() {
    const std::string keys = activationKeyLabel(activationKeys);
    quitMenuItem_->setText(QString::fromStdString("Quit KLOVA: " + keys + " + T"));
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

void AppDelegate::quitApplication() { desktop_.application.terminate(); }

} // namespace klova
