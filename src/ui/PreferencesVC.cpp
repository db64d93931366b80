#include "ui/PreferencesVC.h"

#include "input/ActivationKeys.h"
#include "platform/FatalError.h"
#include "settings/DataStorageManager.h"
#include "settings/LoginController.h"
#include "ui/FitLabels.h"
#include "ui/Images.h"
#include "ui/KeyButton.h"
#include "ui/KeyLegends.h"
#include "ui/Palette.h"
#include "ui/PanelDelegate.h"
#include "ui/PreferencesView.h"

#include <algorithm>
#include <optional>

namespace klova {
namespace {

template <class View> View& required(const QPointer<View>& outlet) {
    if (outlet == nullptr)
        fatalError("a control of the preferences is missing");
    return *outlet;
}

DataStorageManager& storage() {
    if (dataStorageManager == nullptr)
        fatalError("there is no data storage manager");
    return *dataStorageManager;
}

void refreshLabels() {
    PanelDelegate& delegate = panelDelegate();
    delegate.updateActivationKeyLabel();
    delegate.updateShortCutLabels();
}

bool isActivationKey(KeyCode key) {
    return std::ranges::find(activationKeys, key) != activationKeys.end();
}

void flipUnless(QAbstractButton& button, bool on) {
    if (button.isChecked() != on)
        setNextState(button);
}

/// Absent for a mode that there is not.
std::optional<AttributedString> hintOf(std::string_view mode) {
    const auto hint = [](const QString& text, double size) {
        return attributed(text, size, palette::kGray, palette::kHint);
    };
    if (mode == "normal")
        return hint(PreferencesVC::tr("Select at least *one* Activation-Key."), 12);
    if (mode == "note")
        return hint(
            PreferencesVC::tr("*Note*: Selecting only 1 Key suppresses certain Key Commands."), 8);
    return std::nullopt;
}

void setTitle(QAbstractButton& button, const QString& title) {
    button.setText(title);
    QPalette colors = button.palette();
    colors.setColor(QPalette::ButtonText, palette::kGray);
    button.setPalette(colors);
}

} // namespace

QWidget* PreferencesVC::loadView() {
    auto* view = new PreferencesView;
    cmdButton = view->cmdButton;
    altButton = view->altButton;
    ctrlButton = view->ctrlButton;
    textView = view->textView;
    maximizeButton = view->maximizeButton;
    centerButton = view->centerButton;
    reopenButton = view->reopenButton;
    reopenButtonTwo = view->reopenButtonTwo;
    reopenButtonThree = view->reopenButtonThree;
    launchButton = view->launchButton;
    onlyOneButtonLabel = view->onlyOneButtonLabel;
    connectControls(*view);
    return view;
}

void PreferencesVC::connectControls(QWidget& view) {
    const auto answer = [this, &view](QAbstractButton* button,
                                      void (PreferencesVC::*handler)(QAbstractButton&)) {
        // Not "clicked": a screen reader flips a button without a click.
        QObject::connect(button, &QAbstractButton::toggled, &view,
                         [this, button, handler] { (this->*handler)(*button); });
    };
    answer(cmdButton, &PreferencesVC::cmdButtonClicked);
    answer(altButton, &PreferencesVC::altButtonClicked);
    answer(ctrlButton, &PreferencesVC::ctrlButtonClicked);
    answer(maximizeButton, &PreferencesVC::maximizeButtonClicked);
    answer(centerButton, &PreferencesVC::centerButtonClicked);
    answer(reopenButton, &PreferencesVC::reopenButtonClicked);
    answer(reopenButtonTwo, &PreferencesVC::reopenButtonTwoClicked);
    answer(reopenButtonThree, &PreferencesVC::reopenButtonThreeClicked);
    answer(launchButton, &PreferencesVC::launchButtonClicked);
}

void PreferencesVC::viewDidLoad() {
    view().setGeometry(0, 0, 310, 459);
    backgroundImageView = new BackgroundImageView(view().rect(), "Preferences");
    QPalette colors = view().palette();
    colors.setColor(QPalette::Window, palette::kBrown);
    view().setPalette(colors);
    view().setAutoFillBackground(true);
    backgroundImageView->setParent(&view());
    backgroundImageView->lower();
    required(onlyOneButtonLabel).layer().setOpacity(0);
    for (const char* mode : {"note", "normal"}) // so that what is below stays where it is
        onlyOneButtonLabel->reserveRoomFor(*hintOf(mode), PreferencesView::kTextWidth);
    setTitles();
    fitLabels(view(), view());
}

void PreferencesVC::setTitles() {
    setTitle(required(cmdButton), tr("\u2318"));
    setTitle(required(altButton), tr("\u2325"));
    setTitle(required(maximizeButton), tr("Maximize"));
    setTitle(required(centerButton), tr("Center"));
    setTitle(required(reopenButton), legendOf(key::q));
    setTitle(required(reopenButtonTwo), legendOf(key::e));
    setTitle(required(reopenButtonThree), legendOf(key::c));
    setTitle(required(ctrlButton), tr("Ctrl"));
}

void PreferencesVC::viewWillAppear() {
    flipUnless(required(cmdButton), isActivationKey(key::command));
    flipUnless(required(altButton), isActivationKey(key::option));
    flipUnless(required(maximizeButton), maximizingEnabled);
    flipUnless(required(centerButton), centeringEnabled);
    const auto chosen = deminimizeButton == key::e   ? reopenButtonTwo
                        : deminimizeButton == key::q ? reopenButton
                                                     : reopenButtonThree;
    turnOffOtherReopenButtons(required(chosen));
    flipUnless(required(ctrlButton), isActivationKey(key::control));
    const bool launching = storage().isLaunchingOnStartup();
    required(launchButton).setIcon(imageNamed(launching ? "launchAtStartOn" : "launchAtStartOff"));
    if (launching)
        setNextState(*launchButton); // from whatever it is: shown again, it stands off
}

void PreferencesVC::turnOffOtherReopenButtons(const QAbstractButton& chosen) {
    for (QAbstractButton* button : reopenButtons())
        if (button != &chosen && button->isChecked())
            setNextState(*button);
}

std::array<QAbstractButton*, 3> PreferencesVC::reopenButtons() const {
    return {&required(reopenButton), &required(reopenButtonTwo), &required(reopenButtonThree)};
}

void PreferencesVC::cmdButtonClicked(QAbstractButton& sender) {
    toggleActivationKey(sender, key::command);
}
void PreferencesVC::altButtonClicked(QAbstractButton& sender) {
    toggleActivationKey(sender, key::option);
}
void PreferencesVC::ctrlButtonClicked(QAbstractButton& sender) {
    toggleActivationKey(sender, key::control);
}

void PreferencesVC::toggleActivationKey(QAbstractButton& button, KeyCode key) {
    if (stateOf(button) == 0) {
        removeActivationKey(button, key);
    } else {
        if (activationKeys.size() < 2 && required(onlyOneButtonLabel).layer().opacity() != 0)
            onlyOneButtonLabel->fadeOut();
        if (!isActivationKey(key))
            activationKeys.push_back(key);
    }
    storage().saveKeys();
    refreshLabels();
}

void PreferencesVC::removeActivationKey(QAbstractButton& button, KeyCode key) {
    const bool lastButOne = activationKeys.size() == 2;
    setHint(lastButOne ? "note" : "normal");
    if (lastButOne)
        showHint();
    if (activationKeys.size() > 1) {
        const auto found = std::ranges::find(activationKeys, key);
        if (found != activationKeys.end())
            activationKeys.erase(found);
        return;
    }
    setNextState(button);
    showHint();
}

void PreferencesVC::setHint(std::string_view mode) {
    if (const auto hint = hintOf(mode))
        required(onlyOneButtonLabel).setAttributedStringValue(*hint);
}

void PreferencesVC::showHint() {
    if (required(onlyOneButtonLabel).layer().opacity() == 0)
        onlyOneButtonLabel->fadeIn();
}

void PreferencesVC::maximizeButtonClicked(QAbstractButton& sender) {
    maximizingEnabled = sender.isChecked();
    storage().saveMaxCenterSettings();
    refreshLabels();
}

void PreferencesVC::centerButtonClicked(QAbstractButton& sender) {
    centeringEnabled = sender.isChecked();
    storage().saveMaxCenterSettings();
    refreshLabels();
}

void PreferencesVC::reopenButtonClicked(QAbstractButton& sender) {
    chooseReopenKey(sender, key::q);
}
void PreferencesVC::reopenButtonTwoClicked(QAbstractButton& sender) {
    chooseReopenKey(sender, key::e);
}
void PreferencesVC::reopenButtonThreeClicked(QAbstractButton& sender) {
    chooseReopenKey(sender, key::c);
}

void PreferencesVC::chooseReopenKey(QAbstractButton& button, std::int64_t key) {
    if (button.isChecked()) {
        deminimizeButton = key;
        turnOffOtherReopenButtons(button);
    }
    storage().saveDeminimizeButton();
    refreshLabels();
}

void PreferencesVC::launchButtonClicked(QAbstractButton& sender) {
    const bool on = sender.isChecked();
    required(launchButton).setIcon(imageNamed(on ? "launchAtStartOn" : "launchAtStartOff"));
    LoginController::setOpensAtLogin(on);
    storage().saveStartupSettings(on);
}

} // namespace klova
