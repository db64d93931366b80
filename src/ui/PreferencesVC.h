// The content of the preferences panel: each click changes the settings, saves and shows them.
#pragma once

#include "platform/KeyCodes.h"
#include "ui/BackgroundImageView.h"
#include "ui/Controller.h"
#include "ui/HintLabel.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QLabel>
#include <QPointer>
#include <array>
#include <cstdint>
#include <string_view>

namespace klova {

class PreferencesVC final : public ViewController {
    Q_DECLARE_TR_FUNCTIONS(PreferencesVC)

public:
    // The view's own. A handler that misses the one it needs is a fatal error.
    QPointer<QAbstractButton> cmdButton;
    QPointer<QAbstractButton> altButton;
    QPointer<QAbstractButton> ctrlButton;
    QPointer<QWidget> textView;
    QPointer<QAbstractButton> maximizeButton;
    QPointer<QAbstractButton> centerButton;
    QPointer<QAbstractButton> reopenButton;
    QPointer<QAbstractButton> reopenButtonTwo;
    QPointer<QAbstractButton> reopenButtonThree;
    QPointer<QAbstractButton> launchButton;
    QPointer<HintLabel> onlyOneButtonLabel;
    QPointer<BackgroundImageView> backgroundImageView; ///< null until the view was loaded

    /// Builds the panel's look.
    void viewDidLoad() override;

    /// Brings every control in line with the settings.
    void viewWillAppear() override;

    // The answers to a button that the person has just flipped.
    void cmdButtonClicked(QAbstractButton& sender);
    void altButtonClicked(QAbstractButton& sender);
    void ctrlButtonClicked(QAbstractButton& sender);
    void maximizeButtonClicked(QAbstractButton& sender);
    void centerButtonClicked(QAbstractButton& sender);
    void reopenButtonClicked(QAbstractButton& sender);
    void reopenButtonTwoClicked(QAbstractButton& sender);
    void reopenButtonThreeClicked(QAbstractButton& sender);
    void launchButtonClicked(QAbstractButton& sender);

protected:
    QWidget* loadView() override;

private:
    void connectControls(QWidget& view);
    void setTitles();
    void toggleActivationKey(QAbstractButton& button, KeyCode key);
    void removeActivationKey(QAbstractButton& button, KeyCode key);
    void chooseReopenKey(QAbstractButton& button, std::int64_t key);
    void turnOffOtherReopenButtons(const QAbstractButton& chosen);
    void setHint(std::string_view mode);
    void showHint();
    std::array<QAbstractButton*, 3> reopenButtons() const;
};

} // namespace klova
